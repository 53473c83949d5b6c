#include "export/ExportItems.h"

namespace fw {

void ExportTreeLine(ExportContext&, const ShapeRecord&, const PointList&, const std::string&) {}

void ExportForest(ExportContext&, const ShapeRecord&, const PointList&, const std::string&) {}

} // namespace fw
