#include "export/ExportItems.h"

namespace fw {

void ExportRunway(ExportContext&, const ObjectRecord&, const std::string&, int) {}

bool RunwayHasNavigation(const ObjectRecord& r)
{
    return r.IlsEnabledN() != 0 || r.IlsEnabledF() != 0 || r.MarkerEnabledN() != 0 || r.markerEnabledF() != 0;
}

void ExportIls(ExportContext&, const ObjectRecord&, const std::string&) {}

void ExportMarkers(ExportContext&, const ObjectRecord&, const std::string&) {}

} // namespace fw
