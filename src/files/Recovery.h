// Recovery copies: after every event that changed what the project file would hold, the whole
// project is written beside the user's files, so that work the save prompt doesn't cover (a
// sideways drag, the picture's place, the order of polygons) and work lost to a crash come back.
// One copy per project path and one for the unnamed project, each with a note of its file and time.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/Session.h"

namespace fw {

struct RecoveryCopy {
    std::string key;      // the project's path; empty for the unnamed project
    std::string original; // the path the note names
    std::string time;     // when the changes were kept, local time "YYYY-MM-DD HH:MM"
    std::string copyPath;
    std::string notePath;
};

// Copies older than this are dropped when the keeper starts.
inline constexpr int kRecoveryDays = 30;

// Turns the keeper on with folder (made when missing) and drops copies older than 30 days. A
// folder that can't be made turns it off for the session, with one message.
void StartRecovery(Session& s, const std::string& folder);
bool RecoveryOn(const Session& s);

// The project as the project writer writes it.
std::string ProjectTextOf(const Session& s);
// The key of the session's project: its path, or empty while it has no name.
std::string RecoveryKey(const Session& s);

// The project text the file holds, as last noted.
const std::string& RecoveryBaseline(Session& s);

// What the file holds now: after an open, a save or New.
void NoteRecoveryBaseline(Session& s);
// The same when the file holds text (a copy restored over an existing file).
void NoteRecoveryBaseline(Session& s, std::string text);

// After an event: the copy is written when the project differs from its file and from the last
// copy, and dropped when it equals the file again.
void KeepRecovery(Session& s);
// The copy of the session's project goes: its changes were saved or refused.
void DropRecovery(Session& s);

std::optional<RecoveryCopy> FindRecoveryCopy(const Session& s, const std::string& key);
std::vector<RecoveryCopy> RecoveryCopies(const Session& s);
void DropRecoveryCopy(const RecoveryCopy& copy);
// Whether the copy holds anything but the file's own content; false when the copy can't be read.
bool RecoveryDiffers(const RecoveryCopy& copy, const std::string& fileText);

// The question that offers a copy back.
std::string RestoreQuestion(const RecoveryCopy& copy);
inline constexpr const char* kRestoreTitle = "Recovered changes";

} // namespace fw
