#include "export/ExportItems.h"

namespace fw {

void ExportVor(ExportContext&, const ObjectRecord&, const std::string&) {}

void ExportNdb(ExportContext&, const ObjectRecord&, const std::string&) {}

void ExportApi(ExportContext&, const ObjectRecord&, const std::string&) {}

void ExportMenuEntry(ExportContext&, const ObjectRecord&, const std::string&) {}

void ExportGenExcl(ExportContext&, const ObjectRecord&, const std::string&, int) {}

void ExportFlatten(ExportContext&, const ShapeRecord&, const PointList&, const std::string&) {}

} // namespace fw
