#include "export/ExportItems.h"

namespace fw {

void ExportSign(ExportContext&, const ObjectRecord&, const std::string&, int) {}

} // namespace fw
