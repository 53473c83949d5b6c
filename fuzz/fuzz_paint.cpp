// Feeds any bytes to the project reader and paints whatever it reads with the plan view painter
// (PaintFrame) on the plain raster canvas. The bytes after the first NUL, if any, set the view
// and the editor's state as the program can reach them: the canvas size, the zoom and the pan,
// layer view, the grid and its configuration, a background image, the selection, and the overlays
// (a shape being drawn, the ghost of a moving edit, the rubber band, the image frame).
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "FuzzSupport.h"
#include "core/Config.h"
#include "editor/ImageFrame.h"
#include "editor/WorkEdit.h"
#include "render/Bitmap.h"
#include "render/Paint.h"
#include "render/RasterCanvas.h"

namespace {

constexpr double kZoomLevels[] = {0.0625, 0.125, 0.25, 0.5, 1.0, 2.0, 3.0, 4.0};

// A world coordinate: small ones most of the time, any 32-bit value otherwise.
std::int32_t World(fw::fuzz::ByteReader& r)
{
    if (r.Byte() < 192)
        return static_cast<std::int16_t>(r.U16());
    return static_cast<std::int32_t>(r.U32());
}

// A picture of w by h as a loaded background image would leave it.
void SetImage(fw::Session& s, std::int32_t w, std::int32_t h, std::uint8_t shade)
{
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(w) * h);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = static_cast<std::uint32_t>((i * 2654435761u) ^ shade) & 0xFFFFFF;
    fw::CBitmap(s.bitmap).SetPicture(w, h, pixels);
}

void SelectAll(fw::Session& s, std::uint8_t state)
{
    fw::CSelection& sel = s.editor.selection;
    sel.reset();
    for (std::size_t i = 0; i < s.stores.ShapeStore.size() && i < 65535; ++i) {
        const auto& l = s.stores.ShapeStore[i].gLimits;
        sel.addEntry(static_cast<int>(i), 0, l[0], l[1], l[2], l[3]);
    }
    for (std::size_t i = 0; i < s.stores.ObjectStore.size() && i < 65535; ++i) {
        const auto& o = s.stores.ObjectStore[i];
        sel.addEntry(static_cast<int>(i), 1, o.PosX, o.PosX, o.PosY, o.PosY);
    }
    sel.setState(state);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const fw::fuzz::Parts parts = fw::fuzz::SplitAtNul(data, size);
    fw::ProjectData d;
    if (!fw::ReadProjectText(parts.head, d, nullptr, fw::fuzz::kProgramFolder))
        return 0;
    fw::Session s;
    s.programFolder = fw::fuzz::kProgramFolder;
    fw::ResetAtStart(s);
    fw::ResetConfig(s.config, s.programFolder);
    fw::fuzz::TakeProject(s, std::move(d), "/fuzz/project.fwt");

    fw::fuzz::ByteReader r(parts.tail);
    const bool tuned = parts.hasTail && !r.done();
    // Mostly small canvases, which paint faster; now and then one of up to 640 by 480.
    const bool large = tuned && r.Byte() < 32;
    const int width = tuned ? r.Range(1, large ? 640 : 200) : 200;
    const int height = tuned ? r.Range(1, large ? 480 : 150) : 150;
    s.view.setSWidth(width);
    s.view.setSHeight(height);
    s.view.reset();
    // An opened project shows the loaded picture; a picture that can't be read leaves none.
    if (!s.showFlags.BackImagePath.empty())
        SetImage(s, 100, 80, 0);

    if (tuned) {
        const std::uint8_t z = r.Byte();
        s.view.setZoom(z < 192 ? kZoomLevels[z % 8] : 0.001 * std::pow(10.0, 6.0 * r.U16() / 65535.0));
        s.view.setOffX(World(r));
        s.view.setOffY(World(r));
        const std::uint8_t flags = r.Byte();
        if (flags & 1)
            s.view.setMMode(1); // layer view
        if (flags & 2)
            s.showFlags.ShowGrid ^= 1;
        if (flags & 4) {
            // The grid as a configuration can set it.
            for (auto& g : s.config.GridDist)
                g = static_cast<std::int16_t>(r.U16() % 32001);
            s.config.GridColor4 = static_cast<std::int32_t>(r.U32());
            fw::DeriveGridColors(s.config);
        }
        if (flags & 8)
            SetImage(s, r.Range(1, fw::kMaxImageWidth), r.Range(1, fw::kMaxImageHeight), r.Byte());
        if (flags & 16)
            s.showFlags.ShowBackPicture ^= 1;
        switch (r.Byte() % 4) {
        case 0: break; // as the load left it
        case 1: SelectAll(s, 1 + r.Byte() % 3); break;
        case 2: // edit points: one shape and some of its points
            if (!s.stores.ShapeStore.empty()) {
                const std::size_t i = r.U16() % s.stores.ShapeStore.size();
                const auto& l = s.stores.ShapeStore[i].gLimits;
                fw::CSelection& sel = s.editor.selection;
                sel.reset();
                sel.addEntry(static_cast<int>(i), 0, l[0], l[1], l[2], l[3]);
                sel.setState(2);
                const std::size_t n = i < s.stores.PointStore.size() ? s.stores.PointStore[i].size() : 0;
                for (int k = r.Byte() % 4; k > 0 && n > 0; --k)
                    sel.addPt(static_cast<std::uint16_t>(r.U16() % n));
            }
            break;
        case 3: s.editor.selection.reset(); break;
        }
    }

    fw::RasterCanvas back(width, height);
    fw::RasterCanvas window(width, height);
    fw::PaintFrame(s, window, back);

    if (!tuned)
        return 0;
    // The overlays over the frame just composed, as the events that start them leave the state.
    const std::uint8_t overlays = r.Byte();
    if (overlays & 1) { // the rubber band
        s.editor.selSquare.initNew(World(r), World(r));
        s.editor.selSquare.Update(World(r), World(r));
        fw::PaintFrame(s, window, back);
        s.editor.selSquare.reset();
    }
    if (overlays & 2) { // a shape being drawn, its points held in 16 bits
        for (int k = 1 + r.Byte() % 8; k > 0; --k)
            s.editor.draw.AddPoint(static_cast<std::int16_t>(r.U16()), static_cast<std::int16_t>(r.U16()));
        s.editor.draw.Coords.push_back(static_cast<std::int16_t>(r.U16()));
        s.editor.draw.Coords.push_back(static_cast<std::int16_t>(r.U16()));
        fw::PaintFrame(s, window, back);
        s.editor.draw.reset();
    }
    if (overlays & 4) { // the ghost of a moving edit of the selection
        s.editor.EditState = static_cast<std::uint8_t>(r.Byte() % 20);
        fw::LoadWorkingCopy(s);
        fw::WorkMove(s.editor.work, World(r), World(r));
        fw::PaintFrame(s, window, back);
        fw::WorkClear(s.editor.work);
        s.editor.EditState = 0;
    }
    if ((overlays & 8) && fw::CBitmap(s.bitmap).isAvailable()) { // the image frame, moved and scaled
        fw::StartImageFrame(s);
        fw::MoveImageFrame(s.bitmap.frame, World(r), World(r));
        fw::ScaleImageFrame(s.bitmap.frame, World(r), s.bitmap.width, s.bitmap.height);
        s.editor.EditState = (overlays & 16) ? 17 : 0;
        fw::PaintFrame(s, window, back);
        fw::StopImageFrame(s);
    }
    return 0;
}
