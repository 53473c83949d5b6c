#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "core/SignCaption.h"
#include "export/ExportItems.h"
#include "export/ScasmWriter.h"

namespace fw {

namespace {

constexpr int kPanelHeight = 36;
constexpr int kFootInset = kPanelHeight / 4;
constexpr int kPanelGap = 9;
const char* const kLevelRule = "  ;//////////////////////////";

enum class Cell { Direction, Location, RwyInstruction, RwyInstructionArrow };

struct Corner {
    std::int32_t X = 0;
    std::int32_t Y = 0;
    std::int32_t Z = 0;
};

struct SignElement {
    std::array<Corner, 4> corner{};
    std::array<std::int32_t, 4> U{};
    std::array<std::int32_t, 4> V{};
    std::array<std::int32_t, 4> vertex{};
};

struct SignFoot {
    std::array<Corner, 2> corner{};
    std::array<std::int32_t, 2> vertex{};
};

// A panel of the caption with what the export builds for it.
struct SignPanel : SignCaptionPanel {
    std::vector<SignElement> elements;
    std::array<SignFoot, 2> feet{}; // never filled on a sign without feet: its vertices stay 0
    std::array<Corner, 4> back{};
    std::array<std::int32_t, 4> backVertex{};
};

struct Style {
    int base = 0;
    bool lighted = false;
    bool noFeet = false;
};

Style StyleOf(const std::string& text)
{
    if (text == "Flat")
        return {10, false, false};
    if (text == "FlatLighted")
        return {10, true, false};
    if (text == "3D")
        return {0, false, true};
    return {};
}

std::vector<SignPanel> ParsePanels(const std::string& caption)
{
    std::vector<SignPanel> panels;
    for (SignCaptionPanel& p : ParseCaption(caption)) {
        SignPanel panel;
        static_cast<SignCaptionPanel&>(panel) = std::move(p);
        panels.push_back(std::move(panel));
    }
    return panels;
}

struct CellPlace {
    int cx = 0;
    int cy = 0;
    int cw = 32;
    int ch = 32;
    int quadrant = 1;
};

const char* const kArrows[5] = {"ArrowLeft", "ArrowRight", "ArrowUp", "ArrowLeftUp", "ArrowRightUp"};

// Letters A to Z in either case, then "1" to "17": the cell number, or -1.
int LetterOrNumber(const std::string& item)
{
    if (item.size() == 1 && item[0] >= 'A' && item[0] <= 'Z')
        return item[0] - 'A';
    if (item.size() == 1 && item[0] >= 'a' && item[0] <= 'z')
        return item[0] - 'a';
    for (int k = 1; k <= 17; ++k)
        if (item == std::to_string(k))
            return 25 + k;
    return -1;
}

// Where a cell lies on the sheet, in the coordinates of a 256-by-256 drawing. An item not found keeps (0, 0).
CellPlace FindCell(Cell type, const std::string& item)
{
    CellPlace c;
    auto place = [&](int k, int columns) {
        c.cx = (k % columns) * c.cw;
        c.cy = (k / columns) * 32;
    };
    switch (type) {
    case Cell::Direction: {
        c.quadrant = 1;
        int k = LetterOrNumber(item);
        for (int a = 0; a < 5 && k < 0; ++a)
            if (item == kArrows[a])
                k = 43 + a;
        if (k >= 0)
            place(k, 8);
        break;
    }
    case Cell::Location: {
        c.quadrant = 3;
        if (const int k = LetterOrNumber(item); k >= 0)
            place(k, 8);
        break;
    }
    case Cell::RwyInstruction:
        c.cw = 64;
        c.quadrant = 2;
        for (int k = 1; k <= 36; ++k)
            if (item == std::to_string(k)) {
                if (k <= 32) {
                    place(k - 1, 4);
                } else {
                    // 33 to 36 lie in the first quadrant, on row 7 of the drawing.
                    c.quadrant = 1;
                    c.cx = (k - 33) * 64;
                    c.cy = 224;
                }
            }
        break;
    case Cell::RwyInstructionArrow:
        c.quadrant = 1;
        for (int a = 0; a < 5; ++a)
            if (item == kArrows[a]) {
                c.cx = 96 + 32 * a;
                c.cy = 192;
            }
        break;
    }
    return c;
}

Cell CellTypeOf(const std::string& panelType, int slot)
{
    if (panelType == "Direction")
        return Cell::Direction;
    if (panelType == "Location")
        return Cell::Location;
    return slot == 0 || slot == 2 ? Cell::RwyInstructionArrow : Cell::RwyInstruction;
}

void MapTexture(SignElement& e, CellPlace c)
{
    c.cw -= 2;
    c.ch -= 2;
    // Half cuts toward zero, as integer division does.
    int U = c.cx / 2;
    int V = c.cy / 2;
    const int W = c.cw / 2;
    int H = c.ch / 2;
    if (c.quadrant == 2)
        U += 128;
    else if (c.quadrant == 3)
        V += 128;
    V = 255 - V;
    H = -H;
    e.U = {U, U + W, U + W, U};
    e.V = {V, V, V + H, V + H};
}

// Lays the panels out along X from 0 and numbers their vertices; returns the whole width, gap included.
std::int32_t BuildPanels(std::vector<SignPanel>& panels, const Style& style)
{
    std::int32_t X = 0;
    std::int32_t v = 0;
    const std::int32_t top = style.base + kPanelHeight;
    for (SignPanel& p : panels) {
        if (p.slot[0].empty() && p.slot[1].empty() && p.slot[2].empty())
            continue;
        const std::int32_t X0 = X;
        for (int s = 0; s < 4; ++s) {
            if (p.slot[s].empty())
                continue;
            const Cell cell = CellTypeOf(p.type, s);
            const std::int32_t D = cell == Cell::RwyInstruction ? 2 * kPanelHeight : kPanelHeight;
            SignElement e;
            e.corner = {Corner{X, 0, top}, Corner{X + D, 0, top}, Corner{X + D, 0, style.base}, Corner{X, 0, style.base}};
            e.vertex = {v, v + 1, v + 2, v + 3};
            MapTexture(e, FindCell(cell, p.slot[s]));
            p.elements.push_back(e);
            v += 4;
            X += D;
        }
        if (!style.noFeet) {
            const std::int32_t at[2] = {X0 + kFootInset, X - kFootInset};
            for (int f = 0; f < 2; ++f) {
                p.feet[f].corner = {Corner{at[f], 0, 0}, Corner{at[f], 0, style.base}};
                p.feet[f].vertex = {v, v + 1};
                v += 2;
            }
        }
        p.back = {Corner{X0, 0, top}, Corner{X, 0, top}, Corner{X, 0, style.base}, Corner{X0, 0, style.base}};
        p.backVertex = {v, v + 1, v + 2, v + 3};
        v += 4;
        X += kPanelGap;
    }
    return X;
}

// Turns every corner about the middle of the sign; heights stay.
void TurnPanels(std::vector<SignPanel>& panels, std::int32_t width, double rotation)
{
    const double A = (kExportPi / 180) * rotation * -1;
    const std::int32_t mid = ExportRound(width / 2.0, "the middle of a sign");
    const double c = std::cos(A);
    const double s = std::sin(A);
    auto turn = [&](Corner& k) {
        const double x = static_cast<double>(k.X) - mid;
        const double y = k.Y;
        k.X = ExportRound(x * c - y * s, "a sign corner");
        k.Y = ExportRound(y * c + x * s, "a sign corner");
    };
    for (SignPanel& p : panels) {
        for (SignElement& e : p.elements)
            for (Corner& k : e.corner)
                turn(k);
        for (SignFoot& f : p.feet)
            for (Corner& k : f.corner)
                turn(k);
        for (Corner& k : p.back)
            turn(k);
    }
}

std::string Fix7(double v) { return FixN(Real(v), 7); }
std::string Fix5(double v) { return FixN(Real(v), 5); }

std::int32_t PanelColour(const std::string& type)
{
    if (type == "Direction")
        return RGB(200, 200, 0);
    if (type == "RwyInstruction")
        return RGB(220, 20, 0);
    return RGB(10, 10, 0);
}

bool Shown(const SignPanel& p) { return !(p.slot[0].empty() && p.slot[1].empty() && p.slot[2].empty()); }

} // namespace

void ExportSign(ExportContext& ctx, const ObjectRecord& sign, const std::string& indent, int n)
{
    std::vector<SignPanel> panels = ParsePanels(sign.Caption());
    if (panels.empty())
        return;
    const Style style = StyleOf(sign.Style());
    const std::int32_t width = BuildPanels(panels, style);
    TurnPanels(panels, width, sign.Rotation);
    std::erase_if(panels, [](const SignPanel& p) { return !Shown(p); });

    const std::string& I = indent;
    const std::string J = I + "  ";
    const std::string N = Int(n);
    const LatLon at = ctx.latLon(sign.PosX, sign.PosY, 2.0);
    const std::int32_t grey = RGB(128, 128, 128);
    auto blanks = [&](const std::string& s, int count) {
        for (int k = 0; k < count; ++k)
            ctx.add(s);
    };
    auto corner = [&](const Corner& k, std::int32_t vertex) {
        ctx.add(J + Fix7(k.X) + " " + Fix7(k.Z) + " " + Fix7(k.Y) + " ;" + Real(vertex));
    };
    auto feetBlock = [&] {
        ctx.add(J);
        ctx.add(I + "  ;Feet:");
        WriteLineColor(ctx, 1, J);
        for (const SignPanel& p : panels)
            for (const SignFoot& f : p.feet) {
                ctx.add(J);
                ctx.add(J + "MoveToPt( " + Real(f.vertex[0]) + " )");
                ctx.add(J + "DrawToPt( " + Real(f.vertex[1]) + " )");
            }
    };
    auto backBlock = [&] {
        ctx.add(J);
        ctx.add(I + "  ;Back:");
        WriteRGBSColor(ctx, grey, 15, J);
        for (const SignPanel& p : panels) {
            ctx.add(J);
            ctx.add(J + "Poly( ai");
            for (std::int32_t v : p.backVertex)
                ctx.add(J + Fix5(v));
            ctx.add(J + ")");
        }
    };
    // Further off, a plain plate in the panel's colour stands for the letters.
    auto plates = [&] {
        for (const SignPanel& p : panels) {
            ctx.add(J);
            WriteRGBSColor(ctx, PanelColour(p.type), 15, J);
            std::string line = J + "Poly( a";
            for (std::int32_t v : p.backVertex)
                line += "  " + Real(v);
            ctx.add(line + " )");
        }
    };

    blanks(I, 3);
    ctx.add(I + ";////////////////////////////////////////////");
    ctx.add(I + ShapeTitle::TaxiwaySign);
    ctx.add(I + ";////////////////////////////////////////////");
    blanks(I, 2);
    ctx.add(I + "PerspectiveCall( :3DStart" + N + " )");
    ctx.add(I + "ShadowCall( :ShadowStart" + N + " )");
    ctx.add(I + "Jump( :ObjEnd" + N + " )");
    ctx.add(I);
    ctx.add(I + "  :3DStart" + N);
    ctx.add(I + "  Perspective");
    ctx.add(J);
    ctx.add(I + "  :ShadowStart" + N);
    ctx.add(I + "  RefPoint( rel  :RefEnd" + N + " 0.025 " + at.lat + " " + at.lon + " v1= 2000 v2= 480 )");
    blanks(I, 2);

    ctx.add(I + "  Points( 0");
    for (const SignPanel& p : panels) {
        for (const SignElement& e : p.elements)
            for (int k = 0; k < 4; ++k)
                corner(e.corner[k], e.vertex[k]);
        if (!style.noFeet)
            for (const SignFoot& f : p.feet)
                for (int k = 0; k < 2; ++k)
                    corner(f.corner[k], f.vertex[k]);
        for (int k = 0; k < 4; ++k)
            corner(p.back[k], p.backVertex[k]);
    }
    ctx.add(I + "  )");
    blanks(J, 4);

    const std::string flags = style.lighted ? "L5" : "5";
    ctx.add(I + "  IfVarRange( :Far" + N + " 33B 0  350)");
    ctx.add(I + "  IfVarRange( :Close" + N + " 33B 0  250 )");
    blanks(J, 2);

    ctx.add(I + kLevelRule);
    ctx.add(I + "  ;Closest" + N);
    ctx.add(I + "  ;Captions:");
    WriteLoadBitmap(ctx, flags, 15, grey, "fwt_sign1.bmp", J);
    for (const SignPanel& p : panels)
        for (const SignElement& e : p.elements) {
            ctx.add(J);
            ctx.add(J + "TexPoly( a");
            for (int k = 0; k < 4; ++k)
                ctx.add(J + Fix5(e.vertex[k]) + " " + Fix7(e.U[k]) + " " + Fix7(e.V[k]));
            ctx.add(J + ")");
        }
    feetBlock();
    backBlock();
    ctx.add(I + "  Return");
    blanks(J, 2);

    ctx.add(I + kLevelRule);
    ctx.add(I + "  :Close" + N);
    ctx.add(I + "  ;Captions:");
    plates();
    feetBlock();
    backBlock();
    ctx.add(I + "  Return");
    blanks(J, 2);

    ctx.add(I + kLevelRule);
    ctx.add(I + "  :Far" + N);
    ctx.add(I + "  ;Captions:");
    plates();
    backBlock();
    ctx.add(I + "  Return");
    ctx.add(J);

    ctx.add(I + "  :RefEnd" + N);
    ctx.add(I + "  Return");
    blanks(I, 2);
    ctx.add(I + ":ObjEnd" + N);
    blanks(I, 3);
}

} // namespace fw
