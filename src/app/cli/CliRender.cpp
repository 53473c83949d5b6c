#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "app/cli/Commands.h"
#include "core/Helpers.h"
#include "core/Session.h"
#include "files/ConfigFile.h"
#include "files/ProjectFlows.h"
#include "files/TextFile.h"
#include "ports/Ui.h"
#include "gl/OpenGl.h"
#include "render/Bitmap.h"
#include "render/GlView.h"
#include "render/Paint.h"
#include "render/RasterCanvas.h"
#ifdef FW_CLI_QTCANVAS
#include "qt/QtCanvas.h"
#endif

namespace fw::cli {

namespace {

constexpr const char* kRenderUsage =
    "usage: fieldwright-cli render FILE.fwt OUT.png [--opengl] [--size WxH] [--zoom Z] [--offset X Y]\n"
    "  --opengl  the OpenGL view: shapes filled and textured, no display needed\n"
    "  --size    canvas size in pixels (default 800x600)\n"
    "  --zoom    pixels per world unit (default 0.25, the zoom of an opened project)\n"
    "  --offset  the view's pan offset offX offY in world units (default 0 0)\n";

bool ParseInt(const std::string& text, long long lo, long long hi, long long& out)
{
    char* end = nullptr;
    const long long v = std::strtoll(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || v < lo || v > hi)
        return false;
    out = v;
    return true;
}

struct RenderOptions {
    std::string project;
    std::string png;
    int width = 800;
    int height = 600;
    double zoom = 0.25;
    std::int32_t offX = 0;
    std::int32_t offY = 0;
    bool opengl = false;
};

bool ParseOptions(const Args& args, RenderOptions& o)
{
    std::vector<std::string> positional;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--opengl") {
            o.opengl = true;
        } else if (a == "--size" && i + 1 < args.size()) {
            const std::string& v = args[++i];
            const auto x = v.find('x');
            long long w = 0;
            long long h = 0;
            if (x == std::string::npos || !ParseInt(v.substr(0, x), 1, 16384, w) ||
                !ParseInt(v.substr(x + 1), 1, 16384, h)) {
                std::fprintf(stderr, "bad --size '%s': expected WxH, each 1 to 16384\n", v.c_str());
                return false;
            }
            o.width = static_cast<int>(w);
            o.height = static_cast<int>(h);
        } else if (a == "--zoom" && i + 1 < args.size()) {
            const std::string& v = args[++i];
            char* end = nullptr;
            const double z = std::strtod(v.c_str(), &end);
            if (v.empty() || *end != '\0' || !(z >= 0.001 && z <= 1000)) {
                std::fprintf(stderr, "bad --zoom '%s': expected a number from 0.001 to 1000\n", v.c_str());
                return false;
            }
            o.zoom = z;
        } else if (a == "--offset" && i + 2 < args.size()) {
            long long x = 0;
            long long y = 0;
            if (!ParseInt(args[i + 1], -1000000, 1000000, x) || !ParseInt(args[i + 2], -1000000, 1000000, y)) {
                std::fprintf(stderr, "bad --offset '%s %s': expected two whole numbers\n", args[i + 1].c_str(),
                             args[i + 2].c_str());
                return false;
            }
            o.offX = static_cast<std::int32_t>(x);
            o.offY = static_cast<std::int32_t>(y);
            i += 2;
        } else if (a.rfind("--", 0) == 0) {
            std::fprintf(stderr, "unknown or incomplete option '%s'\n%s", a.c_str(), kRenderUsage);
            return false;
        } else {
            positional.push_back(a);
        }
    }
    if (positional.size() != 2) {
        std::fputs(kRenderUsage, stderr);
        return false;
    }
    o.project = positional[0];
    o.png = positional[1];
    return true;
}

// The GL view's frame in a context of its own: textures loaded, list built, frame read back.
bool RenderOpenGl(const Session& s, int width, int height, std::vector<std::uint32_t>& pixels)
{
    HeadlessGlContext context;
    std::string error;
    if (context.Create(error) != 3) {
        std::fprintf(stderr, "Unable to render with OpenGL: %s\n", error.c_str());
        return false;
    }
    OpenGl gl;
    GlFramebuffer frame;
    if (!GlSetup(gl) || !frame.Resize(width, height)) {
        std::fprintf(stderr, "Unable to render with OpenGL: the context has no tessellator or framebuffer\n");
        return false;
    }
    GlTextureTable table;
    GlLoadTextures(s, gl, table);
    GlFillCache fills;
    GlBuildList(s, gl, table, fills);
    GlFrame(s, gl);
    pixels.assign(static_cast<std::size_t>(width) * height, 0);
    frame.Read(pixels.data(), width);
    frame.Release();
    gl.Release();
    return true;
}

} // namespace

int Render(const Args& args)
{
    RenderOptions o;
    if (!ParseOptions(args, o))
        return 2;

    ClosedUi ui(true);
    Session s;
    s.programFolder = ProgramFolder();
    s.ui = &ui;
    ResetAtStart(s);
    ResetConfig(s.config, s.programFolder);
    // The grid's spacings and colours come from the configuration, read but never created here.
    const std::string configPath = ConfigFilePath(s.programFolder);
    std::string configText;
    if (FileExists(configPath) && ReadWholeFile(configPath, configText, kMaxConfigBytes))
        ReadConfigText(s, configText);

    FlowHooks hooks;
    hooks.loadBackImage = [](Session& session, const std::string& path) {
        return CBitmap(session.bitmap).GetPicture(path, session.ui);
    };
    if (!LoadProject(s, o.project, hooks))
        return 1;

    s.view.setSWidth(o.width);
    s.view.setSHeight(o.height);
    s.view.reset();
    s.view.setZoom(o.zoom);
    s.view.setOffX(o.offX);
    s.view.setOffY(o.offY);

    if (o.opengl) {
        std::vector<std::uint32_t> pixels;
        if (!RenderOpenGl(s, o.width, o.height, pixels))
            return 1;
        if (!WritePng(o.png, o.width, o.height, pixels)) {
            std::fprintf(stderr, "Unable to write '%s'\n", o.png.c_str());
            return 1;
        }
        return 0;
    }

    // The frame the desktop program would show, on the same canvas.
#ifdef FW_CLI_QTCANVAS
    qt::QtCanvas back(o.width, o.height);
    qt::QtCanvas window(o.width, o.height);
    PaintFrame(s, window, back);
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(o.width) * o.height);
    for (int y = 0; y < o.height; ++y)
        for (int x = 0; x < o.width; ++x)
            pixels.push_back(window.Pixel(x, y));
#else
    RasterCanvas back(o.width, o.height);
    RasterCanvas window(o.width, o.height);
    PaintFrame(s, window, back);
    const std::vector<std::uint32_t>& pixels = window.Pixels();
#endif
    if (!WritePng(o.png, o.width, o.height, pixels)) {
        std::fprintf(stderr, "Unable to write '%s'\n", o.png.c_str());
        return 1;
    }
    return 0;
}

} // namespace fw::cli
