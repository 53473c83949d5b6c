// Project (.fwt) and selection (.fso) files.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/Records.h"
#include "files/TextFile.h"

namespace fw {

struct Session;

class Ui;

struct ProjectData {
    int version = 0;
    ShowFlagsRecord showFlags;
    ProjectRecord project;
    std::vector<PointList> points;
    std::vector<ShapeRecord> shapes;
    std::vector<ObjectRecord> objects;
};

// What a project text is made of, read where it lies (the session's stores, a ProjectData).
struct ProjectView {
    int version = 1;
    const ShowFlagsRecord& showFlags;
    const ProjectRecord& project;
    const std::vector<PointList>& points;
    const std::vector<ShapeRecord>& shapes;
    const std::vector<ObjectRecord>& objects;
};
ProjectView ViewOf(const ProjectData& d);

constexpr const char* kHeaderCorrupt = "Unable to open file! Corrupted file header...";
constexpr const char* kNewerVersion = "Unable to open file! It has been made with a newer Fieldwright version...";
constexpr const char* kShapeCorrupt = "Unable to open file! Corrupted shape structure...";
constexpr const char* kObjectCorrupt = "Unable to open file! Corrupted object structure...";
constexpr const char* kWriteFailed = "Unable to write file to disk!";

// Reads a project or selection file through all four stages; true when every stage passed.
// Messages go to ui (which may be null). out changes only on success. programFolder roots the
// default macro path of a 3-D object block.
bool ReadProjectFile(const std::string& path, ProjectData& out, Ui* ui, const std::string& programFolder = {});
// The same stages on a text already in memory (a file that can't be read counts as empty).
bool ReadProjectText(std::string_view text, ProjectData& out, Ui* ui, const std::string& programFolder = {});

// The whole project text, line by line, into the buffer.
void BuildProjectText(CBufferS& out, const ProjectView& data);
void BuildProjectText(CBufferS& out, const ProjectData& data);
// The same, in one text with CR LF line ends: the file's bytes.
std::string ProjectText(const ProjectView& data);
// What the session's project file holds: its records and stores, version 1.
ProjectView ProjectViewOf(const Session& s);
ProjectData ProjectDataOf(const Session& s);
// Writes the project; on failure "Unable to write file to disk!" and the old file stays.
bool WriteProjectFile(const std::string& path, const ProjectView& data, Ui* ui);
bool WriteProjectFile(const std::string& path, const ProjectData& data, Ui* ui);

// A selection: the head, the version, the shapes and the objects; no settings, no project.
void BuildSelectionText(CBufferS& out, const std::vector<PointList>& points,
                        const std::vector<ShapeRecord>& shapes, const std::vector<ObjectRecord>& objects);
bool WriteSelectionFile(const std::string& path, const std::vector<PointList>& points,
                        const std::vector<ShapeRecord>& shapes, const std::vector<ObjectRecord>& objects,
                        Ui* ui);

// "'NAME' does not exist!"
std::string DoesNotExistMessage(const std::string& name);

} // namespace fw
