#include "osm/OsmImport.h"

#include <cstdio>

#include "editor/EditorCommon.h"
#include "editor/Undo.h"
#include "osm/OsmRead.h"
#include "ports/Ui.h"

namespace fw {

namespace {

MapContext Context(const Session& s, double latitude, double longitude)
{
    MapContext c;
    c.frame = MakeWorldFrame(latitude, longitude);
    c.config = &s.config;
    c.programFolder = s.programFolder;
    c.shapeRoom = std::max(0, kMaxShapes - s.stores.ShapeCount());
    c.objectRoom = std::max(0, kMaxObjects - s.stores.ObjectCount());
    return c;
}

// Appends the batch and selects it; the show flags of what came in go on.
void Append(Session& s, ImportBatch& batch)
{
    CSelection& sel = s.editor.selection;
    sel.reset();
    sel.resetPt();
    for (std::size_t i = 0; i < batch.shapes.size(); ++i) {
        AppendShape(s.stores, batch.shapes[i], batch.points[i]);
        const auto& l = s.stores.ShapeStore.back().gLimits;
        sel.addEntry(s.stores.ShapeCount() - 1, 0, l[0], l[1], l[2], l[3]);
        if (auto* flag = ShowFlagOf(s.showFlags, batch.shapes[i].gType))
            *flag = 1;
    }
    for (auto& o : batch.objects) {
        sel.addEntry(static_cast<int>(s.stores.ObjectStore.size()), 1, o.PosX, o.PosX, o.PosY, o.PosY);
        if (auto* flag = ShowFlagOf(s.showFlags, o.oType))
            *flag = 1;
        s.stores.ObjectStore.push_back(std::move(o));
    }
    sel.addPt(0);
    sel.setState(1);
}

} // namespace

OsmImportResult ImportOsm(Session& s, const std::string& path, const OsmImportOptions& options)
{
    OsmImportResult result;
    OsmReadResult read = ReadOsmExtract(path, options.progress);
    if (read.cancelled)
        return result;
    if (!read.ok) {
        result.message = std::string(kOsmReadFailed) + "\n" + path + ": " + read.reason;
        return result;
    }
    result.read = true;

    double latitude = s.project.LatitudeDegree;
    double longitude = s.project.LongitudeDegree;
    const bool noReference = latitude == 0 && longitude == 0;
    const auto centre = read.extract.aerodrome ? read.extract.aerodrome : read.extract.centre;
    bool takeReference = false;
    if (noReference && centre) {
        takeReference = !options.takeReference || options.takeReference(*centre, read.extract.aerodrome.has_value());
        if (takeReference) {
            latitude = centre->lat;
            longitude = centre->lon;
        }
    }

    ImportBatch batch = MapExtract(read.extract, Context(s, latitude, longitude));
    result.report = batch.report;
    if (batch.shapes.empty() && batch.objects.empty())
        return result;

    UndoPrepare(s);
    if (takeReference) {
        s.project.LatitudeDegree = latitude;
        s.project.LongitudeDegree = longitude;
    }
    Append(s, batch);
    MarkChanged(s, true);
    result.changed = true;
    // The new shapes may name textures the OpenGL view hasn't loaded yet.
    RebuildGL(s, true);
    PaintFrame(s);
    return result;
}

bool MnuFimportosm(Session& s, const OsmImportOptions& options)
{
    Ui& ui = UiOf(s);
    FileDialogRequest r;
    r.filter = kOsmFilter;
    r.startFolder = s.config.ImportPath;
    std::string path;
    if (!ui.ChooseFile(r, path) || path.empty())
        return false;
    OsmImportOptions withQuestion = options;
    if (!withQuestion.takeReference)
        withQuestion.takeReference = [&ui](const GeoPoint& p, bool aerodrome) {
            char where[64];
            std::snprintf(where, sizeof where, "%.6f, %.6f", p.lat, p.lon);
            const char* question = aerodrome ? kOsmTakeAerodrome : kOsmTakeCentre;
            return ui.AskYesNo(std::string(question) + "\n" + where) == Answer::Yes;
        };
    ui.SetWaitCursor(true);
    const OsmImportResult result = ImportOsm(s, path, withQuestion);
    ui.SetWaitCursor(false);
    if (!result.message.empty())
        ui.Message(result.message, MessageStyle::Critical);
    else if (result.read)
        ui.Message(result.report.imported() > 0 ? result.report.Text()
                                                : std::string(kOsmNothing) + "\n" + result.report.Text(),
                   MessageStyle::Information);
    return result.changed;
}

} // namespace fw
