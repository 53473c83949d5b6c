// The whole project as SCASM text: the head, then the eleven sections in their fixed order.
#pragma once

#include <string>
#include <vector>

#include "core/Config.h"
#include "core/Records.h"
#include "export/ExportContext.h"

namespace fw {

class Ui;
struct Session;

// What an export reads. Nothing of it is changed.
struct ExportInput {
    const ProjectRecord& project;
    const ConfigRecord& config;
    const std::vector<PointList>& points;
    const std::vector<ShapeRecord>& shapes;
    const std::vector<ObjectRecord>& objects;
    char decimalSeparator = '.';
    Ui* ui = nullptr; // where FixFloat reports a violation
    RandomSource* random = nullptr; // the session's; without one an export draws a fresh sequence
};

ExportInput ExportInputOf(const Session& s);

enum ExportMode { kExportCompile = 0, kExportText = 1 };

// Builds the text into out. A value the format can't carry throws OperationFault, its message
// naming the shape or object.
void BuildExportText(const ExportInput& in, const std::string& excludePrefix, ExportBuffer& out);

// Export text: builds the text and writes it to path. ExportMode 0 takes the exclude files' folder from
// bglPath. On any failure the user is told through ui, nothing is written, and the result is false.
bool ExportTextFile(const ExportInput& in, const std::string& path, int exportMode, const std::string& bglPath);

} // namespace fw
