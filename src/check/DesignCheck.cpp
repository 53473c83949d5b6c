#include "check/DesignCheck.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "check/Outline.h"
#include "core/Helpers.h"
#include "core/PathCase.h"
#include "core/Session.h"
#include "core/Stores.h"
#include "export/ExportDriver.h"
#include "export/ScasmCheck.h"
#include "files/ProjectJson.h"
#include "render/Texture.h"

namespace fw {

namespace {

constexpr std::int32_t kWorkArea = 10000;
constexpr const char* kSignSheet = "fwt_sign1.bmp";

// The rules in the order a listing gives them for one item.
const char* const kRuleOrder[] = {
    "count-limit",   "reference-unset", "menu-name",   "setup-wine",      "setup-scasm",
    "export-fault",  "degenerate",      "self-crossing", "point-limit",   "outside-work-area",
    "second-flatten", "missing-texture", "texture-size", "texture-24bit", "missing-macro",
    "threshold-length", "scasm-structure",
};

int RuleRank(const std::string& rule)
{
    const auto it = std::find(std::begin(kRuleOrder), std::end(kRuleOrder), rule);
    return static_cast<int>(it - std::begin(kRuleOrder));
}

int KindRank(ProblemKind k)
{
    switch (k) {
    case ProblemKind::Setup: return 0;
    case ProblemKind::Project: return 1;
    case ProblemKind::Shape: return 2;
    case ProblemKind::Object: return 3;
    }
    return 4;
}

std::string Quoted(const std::string& s) { return "\"" + s + "\""; }

// What every rule reads, gathered once.
class Check {
public:
    Check(const Session& s, const CompilerSetup& setup)
        : s_(s), setup_(setup),
          in_{s.project, s.config, s.stores.PointStore, s.stores.ShapeStore, s.stores.ObjectStore,
              s.decimalSeparator, nullptr, nullptr}
    {
    }

    std::vector<Problem> run()
    {
        // The export runs without the session's generator and without a window to tell.
        BuildExportTextReporting(in_, {}, text_, report_);
        // The text's structure from a tree line or forest on is read beside the rules.
        ScasmTextCheck structureCheck(text_.text(), structureSplit());
        project();
        setupRules();
        exportFaults();
        for (std::size_t i = 0; i < s_.stores.ShapeStore.size(); ++i)
            shape(i);
        for (std::size_t i = 0; i < s_.stores.ObjectStore.size(); ++i)
            object(i);
        structure(structureCheck.problems());
        std::stable_sort(out_.begin(), out_.end(), [](const Problem& a, const Problem& b) {
            if (KindRank(a.kind) != KindRank(b.kind))
                return KindRank(a.kind) < KindRank(b.kind);
            if (a.index != b.index)
                return a.index < b.index;
            return RuleRank(a.rule) < RuleRank(b.rule);
        });
        return std::move(out_);
    }

private:
    const Session& s_;
    const CompilerSetup& setup_;
    ExportInput in_;
    ExportBuffer text_;
    ExportReport report_;
    std::vector<Problem> out_;
    // Texture name to what its file is, read once per check.
    std::map<std::string, std::string> textureVerdicts_;
    std::map<std::string, bool> macroFound_;
    std::vector<char> shapeWritten_;
    std::vector<char> shapeFaulted_;

    void add(const char* rule, ProblemKind kind, int index, std::string message)
    {
        out_.push_back({rule, kind, index, std::move(message)});
    }
    void addShape(const char* rule, std::size_t i, const std::string& text)
    {
        add(rule, ProblemKind::Shape, static_cast<int>(i), ExportItemName(in_, true, i) + " " + text);
    }
    void addObject(const char* rule, std::size_t i, const std::string& text)
    {
        add(rule, ProblemKind::Object, static_cast<int>(i), ExportItemName(in_, false, i) + " " + text);
    }

    bool hasInit() const
    {
        return std::any_of(s_.stores.ObjectStore.begin(), s_.stores.ObjectStore.end(),
                           [](const ObjectRecord& o) { return o.oType == kInit; });
    }

    void project()
    {
        const auto& st = s_.stores;
        if (st.ShapeStore.size() > static_cast<std::size_t>(kMaxShapes))
            add("count-limit", ProblemKind::Project, -1,
                "The project holds " + std::to_string(st.ShapeStore.size()) + " shapes; the tools stop at " +
                    std::to_string(kMaxShapes) + ". Delete shapes until at most " + std::to_string(kMaxShapes) +
                    " remain.");
        if (st.ObjectStore.size() > static_cast<std::size_t>(kMaxObjects))
            add("count-limit", ProblemKind::Project, -1,
                "The project holds " + std::to_string(st.ObjectStore.size()) + " objects; the tools stop at " +
                    std::to_string(kMaxObjects) + ". Delete objects until at most " + std::to_string(kMaxObjects) +
                    " remain.");
        if (s_.project.LatitudeDegree == 0 && s_.project.LongitudeDegree == 0)
            add("reference-unset", ProblemKind::Project, -1,
                "The project's reference point is latitude 0, longitude 0, so the scenery would lie in the sea "
                "off Africa. Set the airport's latitude and longitude in Project settings.");
        if (hasInit() && !CheckScasm({"  Menu( " + s_.project.Name + " )"}).empty())
            add("menu-name", ProblemKind::Project, -1,
                "The project name " + Quoted(s_.project.Name) +
                    " has brackets that break the \"Menu(\" statement of the initial locations. Change the "
                    "airport name in Project settings.");
    }

    void setupRules()
    {
        if (!setup_.nativeProgram.empty()) {
            if (!setup_.nativeRuns)
                add("setup-scasm", ProblemKind::Setup, -1,
                    "The compiler that FIELDWRIGHT_SCASM names, " + Quoted(setup_.nativeProgram) +
                        ", can't be run. Point FIELDWRIGHT_SCASM at the compiler, or unset it to use scasm.exe "
                        "through wine.");
            return;
        }
        if (!setup_.wine)
            add("setup-wine", ProblemKind::Setup, -1,
                "The compiler can't run: wine is not installed. Install it with: sudo dpkg --add-architecture "
                "i386 && sudo apt-get update && sudo apt-get install wine wine32");
        else if (!setup_.wine32)
            add("setup-wine", ProblemKind::Setup, -1,
                "The compiler can't run: wine has no 32-bit support, which scasm.exe needs. Install it with: sudo "
                "dpkg --add-architecture i386 && sudo apt-get update && sudo apt-get install wine32");
        if (!setup_.scasm)
            add("setup-scasm", ProblemKind::Setup, -1,
                "The compiler can't run: scasm.exe is not in the program folder. Copy scasm.exe into " +
                    Quoted(setup_.programFolder) + ".");
    }

    void exportFaults()
    {
        shapeWritten_.assign(s_.stores.ShapeStore.size(), 0);
        shapeFaulted_.assign(s_.stores.ShapeStore.size(), 0);
        for (const ExportItemReport& r : report_.items) {
            if (r.isShape && !r.fault.empty() && r.index < shapeFaulted_.size())
                shapeFaulted_[r.index] = 1;
            if (!r.fault.empty())
                add("export-fault", r.isShape ? ProblemKind::Shape : ProblemKind::Object, static_cast<int>(r.index),
                    r.fault);
            else if (r.isShape && r.endLine > r.firstLine && r.index < shapeWritten_.size())
                shapeWritten_[r.index] = 1;
        }
        if (!report_.projectFault.empty())
            add("export-fault", ProblemKind::Project, -1, report_.projectFault);
    }

    bool faulted(std::size_t shape) const { return shapeFaulted_[shape] != 0; }

    static int PointLimit(int type)
    {
        return type == kTexPoly ? kMaxTexPolyPoints : type == kFlatten ? kMaxFlattenPoints : kMaxPoints;
    }

    void shape(std::size_t i)
    {
        const ShapeRecord& r = s_.stores.ShapeStore[i];
        static const PointList kNone;
        const PointList& pts = i < s_.stores.PointStore.size() ? s_.stores.PointStore[i] : kNone;
        geometry(i, r, pts);
        if (static_cast<int>(pts.size()) > PointLimit(r.gType))
            addShape("point-limit", i,
                     "has " + std::to_string(pts.size()) + " points; a " + std::string(TypeName(r.gType)) +
                         " takes at most " + std::to_string(PointLimit(r.gType)) + ". Delete points in Edit points.");
        workArea(i, pts);
        if (r.gType == kFlatten && firstFlatten() != i)
            addShape("second-flatten", i,
                     "is a second flatten polygon. Only one flatten polygon can be specified for every Fieldwright "
                     "project. Delete it.");
        textures(i, r);
    }

    std::size_t firstFlatten() const
    {
        const auto& st = s_.stores.ShapeStore;
        return static_cast<std::size_t>(
            std::find_if(st.begin(), st.end(), [](const ShapeRecord& r) { return r.gType == kFlatten; }) - st.begin());
    }

    static bool Closed(int type) { return type == kPoly || type == kTexPoly || type == kForest || type == kFlatten; }

    void geometry(std::size_t i, const ShapeRecord& r, const PointList& pts)
    {
        if (r.gType < kPoly || r.gType > kForest || faulted(i))
            return;
        const bool closed = Closed(r.gType);
        const int distinct = DistinctPoints(pts);
        const int needed = closed ? 3 : 2;
        // Polygons and forests the export leaves out whole; the others it writes with nothing to see.
        const bool leftOut = (r.gType == kPoly || r.gType == kTexPoly || r.gType == kForest) && !shapeWritten_[i];
        if (distinct < needed) {
            addShape("degenerate", i,
                     "has " + std::to_string(distinct) + " distinct point" + (distinct == 1 ? "" : "s") +
                         ", fewer than the " + std::to_string(needed) +
                         " it needs, so the scenery shows nothing of it. Add points or delete it.");
            return;
        }
        if (closed && (leftOut || OnOneLine(pts))) {
            addShape("degenerate", i,
                     "has all its points on one line at the export's scale, so the export writes nothing for it. "
                     "Move a point off the line or delete it.");
            return;
        }
        if (!closed)
            return;
        if (const auto c = FindCrossing(pts))
            addShape("self-crossing", i,
                     "crosses itself: the edge from point " + std::to_string(c->first + 1) +
                         " meets the edge from point " + std::to_string(c->second + 1) +
                         ". Move points in Edit points so that no two edges cross.");
    }

    static bool Outside(std::int32_t x, std::int32_t y)
    {
        return x < -kWorkArea || x > kWorkArea || y < -kWorkArea || y > kWorkArea;
    }

    void workArea(std::size_t i, const PointList& pts)
    {
        const auto it = std::find_if(pts.begin(), pts.end(), [](const Point& p) { return Outside(p.X, p.Y); });
        if (it == pts.end())
            return;
        addShape("outside-work-area", i,
                 "has point " + std::to_string(it - pts.begin() + 1) + " at " + std::to_string(it->X) + ", " +
                     std::to_string(it->Y) + ", outside the work area -10000..10000. Move it back inside.");
    }

    // The file's verdict: empty when the simulator can use it, else the rule that finds it.
    const std::string& textureVerdict(const std::string& name)
    {
        auto [it, fresh] = textureVerdicts_.try_emplace(name);
        if (!fresh)
            return it->second;
        const std::string path = FindPathNoCase(AddBackslash(s_.config.TEXPath) + name);
        if (!IsRegularFile(path)) {
            it->second = "missing-texture";
            return it->second;
        }
        std::vector<std::uint32_t> pixels;
        BitmapInfoHeader header;
        std::string label;
        ReadTextureGdi(path, s_.programFolder, pixels, header, label);
        if (label == kLabel24Bit)
            it->second = "texture-24bit";
        else if (label == kLabelUnknown || TextureScale(header.biWidth, header.biHeight) == 0)
            it->second = "texture-size:" + std::to_string(header.biWidth) + " by " + std::to_string(header.biHeight);
        return it->second;
    }

    static bool IsRegularFile(const std::string& path);

    // Objects often share a macro: each path is looked up once.
    bool macroFound(const std::string& path)
    {
        auto [it, fresh] = macroFound_.try_emplace(path);
        if (fresh)
            it->second = IsRegularFile(FindPathNoCase(path));
        return it->second;
    }

    void texture(bool isShape, std::size_t i, const std::string& name)
    {
        const std::string& verdict = textureVerdict(name);
        if (verdict.empty())
            return;
        auto report = [&](const char* rule, const std::string& text) {
            isShape ? addShape(rule, i, text) : addObject(rule, i, text);
        };
        if (verdict == "missing-texture")
            report("missing-texture", "uses the texture " + Quoted(name) + ", which isn't in the texture folder " +
                                          Quoted(AddBackslash(s_.config.TEXPath)) +
                                          ". Copy it there or choose another texture.");
        else if (verdict == "texture-24bit")
            report("texture-24bit", "uses the texture " + Quoted(name) +
                                        ", a 24-bit bitmap (FS INCOMPATIBLE). Save it with 8 bits a pixel and the "
                                        "simulator's palette.");
        else
            report("texture-size", "uses the texture " + Quoted(name) + " of " + verdict.substr(13) +
                                       " pixels, which the simulator can't use. Use a square of 32, 64, 128 or 256 "
                                       "pixels in a form the simulator reads.");
    }

    void textures(std::size_t i, const ShapeRecord& r)
    {
        const bool textured = r.gType == kTexPoly || r.gType == kTreeLine ||
                              ((r.gType == kPoly || r.gType == kWideLine) && r.gIsColored != 1);
        // With mip-map emulation the export names prepared files without extension instead.
        const bool levels = s_.project.UseTextureLevels == 1 && r.vNoTextureLevels != 1 &&
                            (r.gType == kPoly || r.gType == kTexPoly) &&
                            std::find(s_.project.Texture.begin(), s_.project.Texture.end(), r.tDayPath) !=
                                s_.project.Texture.end();
        if (textured && !levels)
            texture(true, i, r.tDayPath);
        if (r.gType == kForest && r.ForestType < s_.config.forest.size()) {
            const ForestTextures& f = s_.config.forest[r.ForestType];
            texture(true, i, f.side);
            for (const std::string& top : f.top)
                texture(true, i, top);
        }
    }

    void object(std::size_t i)
    {
        const ObjectRecord& o = s_.stores.ObjectStore[i];
        if (Outside(o.PosX, o.PosY))
            addObject("outside-work-area", i,
                      "stands at " + std::to_string(o.PosX) + ", " + std::to_string(o.PosY) +
                          ", outside the work area -10000..10000. Move it back inside.");
        if (o.oType == kApi && !macroFound(o.Path()))
            addObject("missing-macro", i,
                      "uses the macro " + Quoted(o.Path()) +
                          ", which can't be found. Choose the macro again in the object's properties.");
        if (o.oType == kRunway && o.ThrOffN() > 0 && o.ThrOffN() >= o.Length())
            addObject("threshold-length", i,
                      "has a threshold offset of " + std::to_string(o.ThrOffN()) + " ft, as long as the runway (" +
                          std::to_string(o.Length()) + " ft) or longer. Shorten the offset or lengthen the runway "
                          "in its properties.");
        if (o.oType == kSign)
            texture(false, i, kSignSheet);
    }

    // The item whose lines hold the given line, if any.
    const ExportItemReport* itemAt(int line) const
    {
        const auto& items = report_.items;
        auto it = std::upper_bound(items.begin(), items.end(), line,
                                   [](int l, const ExportItemReport& r) { return l < r.firstLine; });
        if (it == items.begin())
            return nullptr;
        --it;
        return line < it->endLine ? &*it : nullptr;
    }

    int menuLine() const
    {
        int line = 0;
        int found = 0;
        ForEachLine(text_.text(), [&](std::string_view l) {
            ++line;
            if (!found && l.rfind("  Menu( ", 0) == 0)
                found = line;
        });
        return found;
    }

    // Where a second thread takes the structure of a large text over: the first line of the tree
    // line or forest nearest three eighths into the text, so that the rules and the text before it
    // take about as long as the rest. 0 for none.
    std::size_t structureSplit() const
    {
        constexpr std::size_t kLargeText = 256 * 1024;
        if (text_.size() < kLargeText)
            return 0;
        const std::size_t target = text_.size() / 8 * 3;
        auto distance = [&](std::size_t at) { return at > target ? at - target : target - at; };
        std::size_t best = 0;
        for (const ExportItemReport& r : report_.items) {
            if (!r.isShape || !r.fault.empty() || r.index >= s_.stores.ShapeStore.size())
                continue;
            const int type = s_.stores.ShapeStore[r.index].gType;
            if ((type == kTreeLine || type == kForest) && (best == 0 || distance(r.firstByte) < distance(best)))
                best = r.firstByte;
        }
        return best;
    }

    void structure(const std::vector<ScasmProblem>& problems)
    {
        if (problems.empty())
            return;
        const bool nameReported = std::any_of(out_.begin(), out_.end(), [](const Problem& p) { return p.rule == "menu-name"; });
        const int menu = nameReported ? menuLine() : 0;
        for (const ScasmProblem& p : problems) {
            if (p.line == menu)
                continue;
            const std::string where = "line " + std::to_string(p.line) + " of the SCASM text: " + p.text +
                                      ". The compiler would stop there; look for brackets, quotes or semicolons in the item's names "
                                      "and texts.";
            const ExportItemReport* item = itemAt(p.line);
            if (item && item->isShape)
                addShape("scasm-structure", item->index, "writes a fault at " + where);
            else if (item)
                addObject("scasm-structure", item->index, "writes a fault at " + where);
            else
                add("scasm-structure", ProblemKind::Project, -1, "The export writes a fault at " + where);
        }
    }
};

bool Check::IsRegularFile(const std::string& path)
{
    std::error_code ec;
    return !path.empty() && std::filesystem::is_regular_file(std::filesystem::path(path), ec);
}

std::string JsonString(const std::string& bytes)
{
    std::string out = "\"";
    for (char c : Cp1252ToUtf8(bytes)) {
        const unsigned char u = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (u < 0x20) {
            static const char* hex = "0123456789abcdef";
            out += "\\u00";
            out += hex[u >> 4];
            out += hex[u & 15];
        } else {
            out += c;
        }
    }
    return out + "\"";
}

} // namespace

const char* ProblemKindName(ProblemKind kind)
{
    switch (kind) {
    case ProblemKind::Shape: return "shape";
    case ProblemKind::Object: return "object";
    case ProblemKind::Project: return "project";
    case ProblemKind::Setup: return "setup";
    }
    return "project";
}

std::unique_ptr<Session> CheckSnapshot(const Session& s)
{
    auto copy = std::make_unique<Session>();
    copy->programFolder = s.programFolder;
    copy->decimalSeparator = s.decimalSeparator;
    copy->project = s.project;
    copy->config = s.config;
    copy->stores = s.stores;
    return copy;
}

std::vector<Problem> CheckDesign(const Session& s, const CompilerSetup& setup)
{
    return Check(s, setup).run();
}

bool StopsCompile(const Problem& p)
{
    return p.rule == "export-fault" || p.kind == ProblemKind::Setup;
}

std::string CompileWarning(const std::vector<Problem>& problems)
{
    constexpr int kShown = 5;
    std::string lines;
    int count = 0;
    for (const Problem& p : problems)
        if (StopsCompile(p) && ++count <= kShown)
            lines += "- " + p.message + "\r\n";
    if (count == 0)
        return {};
    if (count > kShown)
        lines += "- ... and " + std::to_string(count - kShown) + " more (View > Problems)\r\n";
    return "The scenery files can't be generated as the design stands:\r\n\r\n" + lines +
           "\r\nGenerate scenery files anyway?";
}

std::string ProblemLine(const Problem& p)
{
    return p.rule + ": " + p.message;
}

std::string ProblemsJson(const std::vector<Problem>& problems)
{
    std::string out = "{\"problems\": [";
    for (std::size_t i = 0; i < problems.size(); ++i) {
        const Problem& p = problems[i];
        out += i ? ",\n  " : "\n  ";
        out += "{\"rule\": " + JsonString(p.rule) + ", \"kind\": " + JsonString(ProblemKindName(p.kind)) +
               ", \"index\": " + std::to_string(p.index) + ", \"message\": " + JsonString(p.message) + "}";
    }
    out += problems.empty() ? "]}\n" : "\n]}\n";
    return out;
}

} // namespace fw
