#include "export/ExportDriver.h"

#include <functional>

#include "core/Session.h"
#include "export/ExportItems.h"
#include "files/ProjectFile.h"
#include "export/ScasmWriter.h"
#include "ports/Ui.h"

namespace fw {

namespace {

const std::string kItemIndent = "  ";

// A section writes its banner when its first item turns up, and its footer only if it had one.
class Section {
public:
    Section(ExportContext& ctx, const char* title, int level, bool withArea,
            std::function<void()> afterBanner = {})
        : ctx_(ctx), title_(title), level_(level), noArea_(!withArea), afterBanner_(std::move(afterBanner))
    {
    }

    // Opens the section if needed and gives the item's counter value.
    int next()
    {
        if (!open_) {
            WriteSectionBanner(ctx_, ctx_.project.LatitudeDegree, ctx_.project.LongitudeDegree, level_, 40, "",
                               title_, noArea_);
            if (afterBanner_)
                afterBanner_();
            open_ = true;
        }
        return counter_++;
    }

    void close()
    {
        if (open_)
            WriteSectionFooter(ctx_, "", noArea_);
    }

private:
    ExportContext& ctx_;
    const char* title_;
    int level_;
    bool noArea_;
    std::function<void()> afterBanner_;
    bool open_ = false;
    int counter_ = 0;
};

std::string Quoted(const std::string& s) { return "\"" + s + "\""; }

std::string ShapeName(const ExportInput& in, std::size_t i)
{
    const ShapeRecord& s = in.shapes[i];
    std::string name = "shape " + std::to_string(i + 1) + " (" + std::string(TypeName(s.gType));
    if (s.gType != kFlatten)
        name += ", " + Quoted(s.gComment);
    return name + ")";
}

std::string ObjectName(const ExportInput& in, std::size_t i)
{
    return "object " + std::to_string(i + 1) + " (" + std::string(TypeName(in.objects[i].oType)) + ")";
}

const PointList& PointsOf(const ExportInput& in, std::size_t i)
{
    static const PointList kNone;
    return i < in.points.size() ? in.points[i] : kNone;
}

} // namespace

ExportInput ExportInputOf(const Session& s)
{
    return ExportInput{s.project, s.config, s.stores.PointStore, s.stores.ShapeStore, s.stores.ObjectStore,
                       s.decimalSeparator, s.ui, &s.random};
}

std::string ExportItemName(const ExportInput& in, bool isShape, std::size_t index)
{
    return isShape ? ShapeName(in, index) : ObjectName(in, index);
}

namespace {

// Runs the items. A fault comes back naming the item; with a report, the item's lines are taken back,
// the fault is noted and the export goes on with the next item.
class ItemRunner {
public:
    ItemRunner(const ExportInput& in, ExportBuffer& out, ExportReport* report) : in_(in), out_(out), report_(report) {}

    template <class F>
    void shape(std::size_t i, F&& run)
    {
        item(true, i, run);
    }
    template <class F>
    void object(std::size_t i, F&& run)
    {
        item(false, i, run);
    }

private:
    template <class F>
    void item(bool isShape, std::size_t i, F& run)
    {
        const std::size_t size = out_.size();
        const int first = out_.count();
        try {
            run();
        } catch (const OperationFault& e) {
            // The name is only made when it is needed.
            std::string message = "The export stopped at " + ExportItemName(in_, isShape, i) + ": " + e.what();
            if (!report_)
                throw OperationFault(message);
            out_.rewind(size, first);
            report_->items.push_back({isShape, i, first + 1, first + 1, size, std::move(message)});
            return;
        }
        if (report_)
            report_->items.push_back({isShape, i, first + 1, out_.count() + 1, size, {}});
    }

    const ExportInput& in_;
    ExportBuffer& out_;
    ExportReport* report_;
};

void BuildText(const ExportInput& in, const std::string& excludePrefix, ExportBuffer& out, ExportReport* report)
{
    const ProjectRecord& p = in.project;
    RandomSource fresh; // an export without a session draws the sequence from its start
    ExportContext ctx{p, in.config, {}, out, excludePrefix, in.random ? in.random : &fresh};
    ctx.geo.scale = ComputeExportScale(p.LatitudeDegree);
    ctx.geo.latitude = p.LatitudeDegree;
    ctx.geo.longitude = p.LongitudeDegree;
    ctx.geo.values = ValueContext{in.decimalSeparator, in.ui};
    out.reset();
    ItemRunner run(in, out, report);
    WriteFileHead(ctx, 1, 512, 512);
    WriteCopyright(ctx, p.Copyright);

    const auto& shapes = in.shapes;
    const auto& objects = in.objects;
    const std::string& I = kItemIndent;

    { // 1
        Section sec(ctx, "EXCLUDE", 6, false);
        for (std::size_t i = 0; i < objects.size(); ++i)
            if (objects[i].oType == kExclude) {
                const int k = sec.next();
                run.object(i, [&] { ExportGenExcl(ctx, objects[i], I, k); });
            }
        sec.close();
    }
    { // 2
        Section sec(ctx, "FLATTEN POLYGON", 6, false);
        for (std::size_t i = 0; i < shapes.size(); ++i)
            if (shapes[i].gType == kFlatten) {
                sec.next();
                run.shape(i, [&] { ExportFlatten(ctx, shapes[i], PointsOf(in, i), I); });
            }
        sec.close();
    }
    { // 3
        Section sec(ctx, "MENU ENTRY", 6, false, [&] { WriteMenu(ctx, p.Name, I); });
        for (std::size_t i = 0; i < objects.size(); ++i)
            if (objects[i].oType == kInit) {
                sec.next();
                run.object(i, [&] { ExportMenuEntry(ctx, objects[i], I); });
            }
        sec.close();
    }
    { // 4
        Section sec(ctx, "UNLAYERED POLYGONS", 6, true);
        for (std::size_t i = 0; i < shapes.size(); ++i)
            if (shapes[i].vLayer == 0 && (shapes[i].gType == kPoly || shapes[i].gType == kTexPoly)) {
                const int n = sec.next();
                run.shape(i, [&] { ExportPolygon(ctx, shapes[i], PointsOf(in, i), I, n); });
            }
        sec.close();
    }
    { // 5
        Section sec(ctx, "UNLAYERED WIDE LINES", 6, true);
        for (std::size_t i = 0; i < shapes.size(); ++i)
            if (shapes[i].vLayer == 0 && shapes[i].gType == kWideLine) {
                const int n = sec.next();
                run.shape(i, [&] { ExportWideLine(ctx, shapes[i], PointsOf(in, i), I, n); });
            }
        sec.close();
    }
    { // 6: dotted lines, and the centre-line copies of the wide lines of section 5
        Section sec(ctx, "UNLAYERED DOT LINES", 6, true);
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            const ShapeRecord& s = shapes[i];
            if (s.vLayer != 0 || !(s.gType == kDotLine || HasCentreLine(s)))
                continue;
            const int n = sec.next();
            run.shape(i, [&] {
                ExportDotLine(ctx, s.gType == kDotLine ? s : CentreLineCopy(s), PointsOf(in, i), I, n);
            });
        }
        sec.close();
    }
    { // 7
        Section sec(ctx, "LAYERED SHAPES", 6, false);
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            const ShapeRecord& s = shapes[i];
            if (s.vLayer == 0 || s.gType < kPoly || s.gType > kDotLine)
                continue;
            const int n = sec.next();
            run.shape(i, [&] {
                const PointList& pts = PointsOf(in, i);
                if (s.gType == kWideLine)
                    ExportWideLine(ctx, s, pts, I, n);
                else if (s.gType == kDotLine)
                    ExportDotLine(ctx, s, pts, I, n);
                else
                    ExportPolygon(ctx, s, pts, I, n);
            });
            if (HasCentreLine(s)) {
                const int m = sec.next();
                run.shape(i, [&] { ExportDotLine(ctx, CentreLineCopy(s), PointsOf(in, i), I, m); });
            }
        }
        sec.close();
    }
    { // 8
        Section sec(ctx, "RUNWAYS", 5, true);
        for (std::size_t i = 0; i < objects.size(); ++i)
            if (objects[i].oType == kRunway) {
                const int n = sec.next();
                run.object(i, [&] { ExportRunway(ctx, objects[i], I, n); });
            }
        sec.close();
    }
    { // 9: tree lines and forests, then 3-D objects; one area each, so no label numbers
        Section sec(ctx, "3-D OBJECTS", 5, false);
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            if (shapes[i].gType == kTreeLine) {
                sec.next();
                run.shape(i, [&] { ExportTreeLine(ctx, shapes[i], PointsOf(in, i), I); });
            } else if (shapes[i].gType == kForest) {
                sec.next();
                run.shape(i, [&] { ExportForest(ctx, shapes[i], PointsOf(in, i), I); });
            }
        }
        for (std::size_t i = 0; i < objects.size(); ++i)
            if (objects[i].oType == kApi) {
                sec.next();
                run.object(i, [&] { ExportApi(ctx, objects[i], I); });
            }
        sec.close();
    }
    { // 10
        Section sec(ctx, "TAXIWAY SIGNS", 6, true);
        for (std::size_t i = 0; i < objects.size(); ++i)
            if (objects[i].oType == kSign) {
                const int n = sec.next();
                run.object(i, [&] { ExportSign(ctx, objects[i], I, n); });
            }
        sec.close();
    }
    { // 11
        Section sec(ctx, "NAVIGATION", 6, false);
        for (std::size_t i = 0; i < objects.size(); ++i) {
            const ObjectRecord& o = objects[i];
            if (o.oType == kVor) {
                sec.next();
                run.object(i, [&] { ExportVor(ctx, o, I); });
            } else if (o.oType == kNdb) {
                sec.next();
                run.object(i, [&] { ExportNdb(ctx, o, I); });
            } else if (o.oType == kRunway && RunwayHasNavigation(o)) {
                sec.next();
                run.object(i, [&] {
                    ExportIls(ctx, o, I);
                    ExportMarkers(ctx, o, I);
                });
            }
        }
        sec.close();
    }
}

} // namespace

void BuildExportText(const ExportInput& in, const std::string& excludePrefix, ExportBuffer& out)
{
    BuildText(in, excludePrefix, out, nullptr);
}

void BuildExportTextReporting(const ExportInput& in, const std::string& excludePrefix, ExportBuffer& out,
                              ExportReport& report)
{
    report = ExportReport{};
    try {
        BuildText(in, excludePrefix, out, &report);
    } catch (const OperationFault& e) {
        report.projectFault = e.what();
    }
}

bool ExportTextFile(const ExportInput& in, const std::string& path, int exportMode, const std::string& bglPath)
{
    ExportBuffer buffer;
    try {
        BuildExportText(in, exportMode == kExportText ? std::string() : bglPath, buffer);
    } catch (const OperationFault& e) {
        if (in.ui)
            in.ui->Message(std::string(e.what()) + "\r\n\r\nNo file was written.", MessageStyle::Critical);
        return false;
    }
    // The bytes go out as they stand (Windows-1252), each line ended by CR LF. The text is made
    // again from its project at any time, so the command doesn't wait for the disk.
    if (!WriteTextReplacing(path, buffer.text(), false)) {
        if (in.ui)
            in.ui->Message(kWriteFailed, MessageStyle::Critical);
        return false;
    }
    return true;
}

} // namespace fw
