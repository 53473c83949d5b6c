// The OpenGL view: shapes filled and textured as the simulator shows them, compiled into display
// list 1 and replayed on each full paint. Objects, grid and background image aren't in it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/Session.h"
#include "ports/GlApi.h"

namespace fw {

struct GlTextureEntry {
    std::string name;
    // Carried, never read back.
    double scaleX = 1.0;
    double scaleY = 1.0;
};

// The textures uploaded so far; an entry's OpenGL name is its index + 1, entry 0 the "None" checker.
class GlTextureTable {
public:
    void clear() { entries_.clear(); }
    // False when the 16-bit count is full.
    bool add(const std::string& name);
    std::uint16_t count() const { return static_cast<std::uint16_t>(entries_.size()); }
    const std::vector<GlTextureEntry>& entries() const { return entries_; }
    // index + 1 of the name, compared without regard to case; 1 ("None") when it isn't there.
    unsigned find(const std::string& name) const;
    bool contains(const std::string& name) const;

private:
    std::vector<GlTextureEntry> entries_;
};

// The tessellator's primitives of each shape's fill, with the vertices they were made from: the
// list is compiled anew after every edit, and only a fill whose vertices changed is tessellated
// again.
class GlFillCache {
public:
    // The primitives of the fill of the shape at index, whose vertex buffer is vertices.
    const GlPrimitives& Fill(GlApi& gl, std::size_t index, const std::vector<double>& vertices);
    // Forgets the shapes from count on.
    void Trim(std::size_t count);
    void clear() { entries_.clear(); }
    // How many polygons went through the tessellator so far.
    int tessellations() const { return tessellations_; }

private:
    struct Entry {
        std::vector<double> vertices;
        GlPrimitives primitives;
        bool made = false;
    };
    std::vector<Entry> entries_;
    int tessellations_ = 0;
};

inline constexpr unsigned kGlShapeList = 1;

// Once after the context is made current: blending, white clear colour, hints, the tessellator.
// False when no tessellator could be made.
bool GlSetup(GlApi& gl);

// The 32 by 32 black and white checker at alpha 128 that stands for a missing texture.
std::vector<std::uint8_t> GlNoneChecker();

// Empties the table and uploads the checker and every readable texture of the Poly, TexPoly and
// WideLine shapes, from the configured texture folder.
void GlLoadTextures(const Session& s, GlApi& gl, GlTextureTable& table);

// Compiles list 1 anew from the shapes: fills, unselected outlines, selected outlines. Nothing
// happens without shapes, so the old list stays.
void GlBuildList(const Session& s, GlApi& gl, const GlTextureTable& table, GlFillCache& fills);

// Sets the projection of the current view, clears and replays the list. The caller swaps.
void GlFrame(const Session& s, GlApi& gl);

// The fills of the shape at index.
void GlPaintPoly(GlApi& gl, const GlTextureTable& table, GlFillCache& fills, std::size_t index, const PointList& points,
                 const ShapeRecord& record);
void GlPaintTexPoly(GlApi& gl, const GlTextureTable& table, GlFillCache& fills, std::size_t index,
                    const PointList& points, const ShapeRecord& record);
void GlPaintOutline(GlApi& gl, const PointList& points, bool closed, std::int32_t colour, bool showPoints,
                    double zoom);

} // namespace fw
