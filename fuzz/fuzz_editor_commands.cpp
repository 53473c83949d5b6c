// Feeds any bytes to the project reader and, on whatever it reads, runs editor events: the bytes
// after the first NUL are a program of tool clicks, mouse and key events, menu commands (Edit,
// Selection, Background, Help and the canvas's pop-ups, through the menus' enabling as the replay
// harness does) and answers to the questions and dialogs they raise, the dialogs' own checks
// included. The repaints the editor asks for paint the frame on the plain raster canvas. The File
// menu is left to fuzz_replay: nothing here opens or writes a file.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "dialogs/FormAnswers.h"
#include "editor/Commands.h"
#include "replay/Replay.h"
#include "render/Bitmap.h"
#include "render/Paint.h"
#include "render/RasterCanvas.h"

namespace {

// The menu commands of the editor, by their names (a name the harness doesn't know is skipped).
const char* const kCommands[] = {
    "MnuC2625",         "MnuC2125",        "MnuC225",         "MnuC250",          "MnuC2100",
    "MnuC2200",         "MnuC2300",        "MnuC2400",        "MnuBshowpoly",     "MnuBshowtexpoly",
    "MnuBshowline",     "MnuBshowdotline", "MnuBshowtreeline", "MnuBshowforest",  "MnuBshow3d",
    "MnuBshowsign",     "MnuBshowrunway",  "MnuBshownavigation", "MnuBshowexclude", "MnuEundo",
    "MnuEcopy",         "MnuEpaste",       "MnuEdelete",      "MnuEflipx",        "MnuEflipy",
    "MnuErescale",      "MnuErotate",      "MnuEdscale",      "MnuEdrot",         "MnuSselectshape",
    "MnuSeditpoints",   "MnuSdragshape",   "MnuSshapeproperties", "MnuSconvertshapeto", "MnuSback",
    "MnuC3",            "MnuSfront",       "MnuC3bringtofront", "MnuBshowall",    "MnuBedit",
    "MnuBshowbackground", "MnuBshowgrid",  "MnuC2centerHere", "MnuHhelp",         "MnuHhomepage",
    "MnuBremove",       "MnuHconverter"};

// Key codes the canvas reacts to, and a few it doesn't.
const int kKeys[] = {45, 13, 187, 189, 46, 27, 8, 37, 38, 39, 40, 107, 109, 0, 65, 255};

const char* const kSimpleAnswers[] = {"ok", "cancel", "yes", "no"};

// What a user can type into a text box, and some of what a paste can bring.
const char* const kTexts[] = {"0",   "1",      "2",      "-1",   "0.5",  "0,5",   "45",   "-45",
                              "360", "1000",   "99999",  "1E+300", "-1E+300", "1e10", "nan", "inf",
                              "abc", "0.0001", "2147483648", "100", "-32768", "32767", "1.5E-10", "7"};

const char* const kForms[] = {"FormShape", "FormOapi",  "FormOndb",     "FormOvor",    "FormOexclude", "FormInit",
                              "FormRunway", "FormSign", "FormSettings", "FormOptimize", "FormOptions"};

const char* const kFields[] = {"Text1",  "Text2",  "Text3",  "Text4",  "Text5",  "Text6",  "Text7",  "Text8",
                               "Text9",  "Text10", "Text11", "Text12", "Text13", "Text14", "Text15", "Check1",
                               "Check2", "Check3", "Combo1", "Combo2", "Combo3", "Combo4", "Combo5", "Type1",
                               "Type2",  "Type3",  "Type4",  "Type5",  "Caption", "Texture", "Text"};

const char* const kFieldValues[] = {"0", "1", "2", "3", "4", "5", "8", "-1", "0.5", "0,5", "1E+300", "abc",
                                    "45", "360", "32768", "-2147483649", "L_27R", "1_2_3_4_5", "99", "100000"};

// The editor's requests for a repaint, painted on the raster canvas of the view's size: each one
// that paints over the last frame (a shape being drawn, a moving edit, the rubber band, the image
// frame), every fourth of the others, and the last. A whole frame costs more than the events.
struct Painter {
    std::unique_ptr<fw::RasterCanvas> back;
    std::unique_ptr<fw::RasterCanvas> window;
    int seen = 0;
    int skipped = 0;

    void Update(const fw::Session& s, int repaints, bool last = false)
    {
        if (repaints == seen && !last)
            return;
        seen = repaints;
        const bool over = fw::TakesOverlayPath(s) || s.editor.selSquare.IsActive() == 1;
        if (!over && !last && ++skipped % 4 != 0)
            return;
        const int w = s.view.sWidth();
        const int h = s.view.sHeight();
        if (!back || back->Width() != w || back->Height() != h) {
            back = std::make_unique<fw::RasterCanvas>(w, h);
            window = std::make_unique<fw::RasterCanvas>(w, h);
        }
        fw::PaintFrame(s, *window, *back);
    }
};

int Pixel(fw::fuzz::ByteReader& r, int size)
{
    return r.Byte() < 224 ? r.Range(-64, size + 64) : r.Range(-4000, 4000);
}

std::string Coordinates(fw::fuzz::ByteReader& r, const fw::Session& s)
{
    const int x = Pixel(r, s.view.sWidth());
    return std::to_string(x) + " " + std::to_string(Pixel(r, s.view.sHeight()));
}

std::string Mods(fw::fuzz::ByteReader& r)
{
    static const char* const kMods[] = {"", " shift", " ctrl", " alt", " shift+ctrl", " ctrl+alt", "", ""};
    return kMods[r.Byte() % 8];
}

// One line of the replay harness from the next bytes.
std::string NextLine(fw::fuzz::ByteReader& r, const fw::Session& s)
{
    static const char* const kButtons[] = {"L", "L", "L", "R", "M"};
    const int op = r.Byte() % 14;
    switch (op) {
    case 0: return std::string("tool ") + r.Pick(fw::kToolKeys);
    case 1:
    case 3: {
        std::string line = std::string(op == 1 ? "down " : "up ") + r.Pick(kButtons) + " ";
        line += Coordinates(r, s);
        return line + Mods(r);
    }
    case 2: {
        std::string line = "move " + Coordinates(r, s);
        return line + Mods(r);
    }
    case 4: return "dblclick " + Coordinates(r, s);
    case 5: return "key " + std::to_string(r.Pick(kKeys));
    case 6:
    case 7: return std::string("command ") + r.Pick(kCommands);
    case 8: return std::string("answer ") + r.Pick(kSimpleAnswers);
    case 9: return "answer index " + std::to_string(static_cast<int>(r.Byte() % 12) - 1);
    case 10: {
        std::string line = "answer text";
        for (int k = 1 + r.Byte() % 3; k > 0; --k)
            line += std::string(" ") + r.Pick(kTexts);
        const std::uint8_t ratio = r.Byte() % 3;
        return line + (ratio == 1 ? " ratio" : ratio == 2 ? " noratio" : "");
    }
    case 11: return std::string("answer tip ") + (r.Byte() % 2 ? "dontshow" : "show");
    case 12: {
        std::string line = std::string("answer form ") + r.Pick(kForms);
        for (int k = r.Byte() % 4; k > 0; --k) {
            line += std::string(" ") + r.Pick(kFields);
            line += std::string("=") + r.Pick(kFieldValues);
        }
        return line + (r.Byte() % 4 ? " ok" : " cancel");
    }
    default: {
        const int width = r.Range(1, 240);
        return "canvas " + std::to_string(width) + " " + std::to_string(r.Range(1, 180));
    }
    }
}

// Without a program of its own an input runs this one: a bit of every kind of event.
const char* const kDefaultProgram[] = {
    "down L 100 80", "move 120 90", "up L 120 90", "command MnuEflipx", "answer text 2 ratio",
    "command MnuErescale", "answer text 45", "command MnuErotate", "command MnuEundo", "command MnuEcopy",
    "command MnuEpaste", "command MnuEdelete", "command MnuEundo", "command MnuSeditpoints", "key 45",
    "command MnuSdragshape", "down L 110 85", "move 120 95", "up L 120 95", "answer ok",
    "command MnuSconvertshapeto", "tool poly", "down L 10 10", "up L 10 10", "down L 60 10", "up L 60 10",
    "answer ok", "dblclick 60 60", "command MnuBedit", "down R 30 30", "up R 30 30", "command MnuC2centerHere",
    "command MnuC2100", "answer ok", "command MnuSshapeproperties", "key 187", "command MnuBshowgrid"};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const fw::fuzz::Parts parts = fw::fuzz::SplitAtNul(data, size);
    fw::ProjectData d;
    if (!fw::ReadProjectText(parts.head, d, nullptr, fw::fuzz::kProgramFolder))
        return 0;

    // A replay session without a base folder: the lines made here name no file.
    fw::ReplaySession replay(fw::fuzz::kProgramFolder);
    fw::Session& s = replay.session;
    replay.ui.formAnswers = [&s](const std::vector<std::string>& words, const fw::ReplayUi::FormTarget& t,
                                 std::string& why) {
        fw::FormAnswerResult r = fw::FormAnswerResult::Refused;
        if (t.shape)
            r = fw::AnswerShapeForm(words, *t.shape, t.points, t.mustComplete, s.values(), why);
        else if (t.object)
            r = fw::AnswerObjectForm(words, *t.object, s.config, s.programFolder, s.values(), why);
        else if (t.project)
            r = fw::AnswerProjectForm(words, *t.project, t.mustComplete, s.values(), why);
        return static_cast<int>(r);
    };
    fw::fuzz::ByteReader r(parts.tail);
    s.decimalSeparator = r.Byte() & 1 ? ',' : '.';

    std::string error;
    // Small canvases: a run paints after nearly every event, and the pixels cost more than the logic.
    const int width = parts.hasTail ? r.Range(1, 240) : 160;
    const int height = parts.hasTail ? r.Range(1, 180) : 120;
    replay.Run("canvas " + std::to_string(width) + " " + std::to_string(height), error);
    fw::fuzz::TakeProject(s, std::move(d), "/fuzz/project.fwt");
    // The loaded project's picture, as if its file could be read.
    if (!s.showFlags.BackImagePath.empty()) {
        const std::vector<std::uint32_t> pixels(100 * 80, 0x808080);
        fw::CBitmap(s.bitmap).SetPicture(100, 80, pixels);
    }
    Painter painter;
    painter.Update(s, ++replay.ui.repaints);

    // A line the harness refuses (a disabled tool, a command it doesn't know) is skipped: the
    // program of events goes on, as a user's would.
    if (!parts.hasTail) {
        for (const char* line : kDefaultProgram) {
            replay.Run(line, error);
            painter.Update(s, replay.ui.repaints);
        }
    }
    for (int steps = 0; !r.done() && steps < 4096; ++steps) {
        replay.Run(NextLine(r, s), error);
        painter.Update(s, replay.ui.repaints);
    }
    painter.Update(s, replay.ui.repaints, true);
    return 0;
}
