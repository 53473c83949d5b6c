// The one open project and everything the session keeps between events.
#pragma once

#include <cstdint>
#include <string>

#include "core/BitmapState.h"
#include "core/COffset.h"
#include "core/Config.h"
#include "core/EditorState.h"
#include "core/Random.h"
#include "core/Helpers.h"
#include "core/Recent.h"
#include "core/Records.h"
#include "core/Stores.h"

namespace fw {

class Ui;

constexpr const char* kUnnamedProject = "New project.fwt";

// The recovery copies' bookkeeping (the keeper itself works in files/Recovery): where copies go,
// and the project's text as its file holds it and as its copy was last written.
struct RecoveryState {
    std::string folder; // ends in a separator; empty while the keeper is off
    std::string baselineKey;
    std::string baseline;
    bool baselineKnown = false;
    std::string written;
    // The project as the keeper last saw it: at its last look, or when the baseline was noted.
    // The same records make the same text, so a look that finds them unchanged has nothing to do.
    bool seenValid = false;
    bool baselineOfSeen = false; // the baseline is the text of what was seen, not made yet
    ShowFlagsRecord seenFlags;
    ProjectRecord seenProject;
    Stores seen;
};

struct Session {
    // Host facts, set once at start.
    std::string programFolder; // ends in a separator
    char decimalSeparator = '.';
    Ui* ui = nullptr;
    // The maker's web site that "Fieldwright on the net..." opens; set by the desktop program.
    std::string homePage;

    Stores stores;
    ProjectRecord project;
    ShowFlagsRecord showFlags;
    ConfigRecord config;

    std::string projectPath = kUnnamedProject;
    std::int16_t hasName = 0;
    std::uint8_t dirty = 0;
    std::uint8_t canPaste = 0;
    std::uint8_t canUndo = 0;
    std::uint8_t openGLActive = 0;
    std::uint8_t windowReady = 0;

    COffset view;
    EditorState editor;
    RecoveryState recovery;
    CRecent recent;
    CBitmapState bitmap;
    // Drawn from by exports (the shaken feet of forests), which otherwise only read the session.
    mutable RandomSource random;

    ValueContext values() const { return {decimalSeparator, ui}; }
};

void ResetAtStart(Session& s);
// Also drops the background image; keeps the recent list and the copy buffer.
void ResetForNewProject(Session& s);
void ResetForLoadedProject(Session& s, const std::string& path);
void MarkSaved(Session& s);
// "Fieldwright - [Unsaved document]" or "Fieldwright - [name.fwt]".
std::string Title(const Session& s);

} // namespace fw
