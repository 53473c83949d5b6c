#include "editor/EditorCommon.h"

#include <algorithm>
#include <limits>

#include "core/Numbers.h"

namespace fw {

Ui& UiOf(Session& s)
{
    static ClosedUi closed;
    return s.ui ? *s.ui : closed;
}

void PaintFrame(Session& s) { UiOf(s).Repaint(); }

void RebuildGL(Session& s, bool full)
{
    if (s.openGLActive)
        UiOf(s).RebuildGLList(full);
}

void SetCanvasPointer(Session& s, int code, int cursor)
{
    Pointer p = Pointer::Arrow;
    switch (code) {
    case 2: p = Pointer::Cross; break;
    case 6: p = Pointer::SizeNESW; break;
    case 7: p = Pointer::SizeNS; break;
    case 8: p = Pointer::SizeNWSE; break;
    case 9: p = Pointer::SizeWE; break;
    case 15: p = Pointer::SizeAll; break;
    case 99:
        switch (cursor) {
        case 101: p = Pointer::Custom101; break;
        case 102: p = Pointer::Custom102; break;
        case 103: p = Pointer::Custom103; break;
        case 104: p = Pointer::Custom104; break;
        case 105: p = Pointer::Custom105; break;
        case 106: p = Pointer::Custom106; break;
        case 107: p = Pointer::Custom107; break;
        case 108: p = Pointer::Custom108; break;
        default: break;
        }
        break;
    default: break;
    }
    UiOf(s).SetPointer(p);
}

int PointerCode(Pointer p)
{
    switch (p) {
    case Pointer::Arrow: return 0;
    case Pointer::Wait: return 11;
    case Pointer::Cross: return 2;
    case Pointer::SizeAll: return 15;
    case Pointer::SizeNESW: return 6;
    case Pointer::SizeNS: return 7;
    case Pointer::SizeNWSE: return 8;
    case Pointer::SizeWE: return 9;
    default: return 99;
    }
}

int PointerCursor(Pointer p)
{
    switch (p) {
    case Pointer::Custom101: return 101;
    case Pointer::Custom102: return 102;
    case Pointer::Custom103: return 103;
    case Pointer::Custom104: return 104;
    case Pointer::Custom105: return 105;
    case Pointer::Custom106: return 106;
    case Pointer::Custom107: return 107;
    case Pointer::Custom108: return 108;
    default: return 0;
    }
}

std::int32_t Add32(std::int64_t a, std::int64_t b)
{
    const std::int64_t r = a + b;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(r, std::numeric_limits<std::int32_t>::min(),
                                                               std::numeric_limits<std::int32_t>::max()));
}

} // namespace fw
