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

// How the export's messages name an item: "shape 3 (Poly, "taxiway A")", "object 2 (VOR)".
std::string ExportItemName(const ExportInput& in, bool isShape, std::size_t index);

// One item of an export as a check sees it: where its lines stand, or the fault it stopped at.
struct ExportItemReport {
    bool isShape = true; // else an object
    std::size_t index = 0;
    int firstLine = 0; // 1-based; its lines are [firstLine, endLine)
    int endLine = 0;
    std::size_t firstByte = 0; // where its first line starts in the text
    std::string fault; // the export's message when it stopped here; the item then left no line
};

struct ExportReport {
    std::vector<ExportItemReport> items;
    std::string projectFault; // a fault outside the items (the file head): the text ends there
};

// Builds the text as BuildExportText does, except that an item that faults leaves no line and is noted
// in report, and the export goes on with the next item. Without faults the text is the export's.
void BuildExportTextReporting(const ExportInput& in, const std::string& excludePrefix, ExportBuffer& out,
                              ExportReport& report);

// Export text: builds the text and writes it to path. ExportMode 0 takes the exclude files' folder from
// bglPath. On any failure the user is told through ui, nothing is written, and the result is false.
bool ExportTextFile(const ExportInput& in, const std::string& path, int exportMode, const std::string& bglPath);

} // namespace fw
