#include "core/Config.h"

#include <algorithm>

namespace fw {

int DefaultShapeIndex(int type)
{
    switch (type) {
    case kPoly: return 0;
    case kTexPoly: return 1;
    case kWideLine: return 2;
    case kDotLine: return 3;
    case kTreeLine: return 4;
    case kForest: return 5;
    default: return -1;
    }
}

void DeriveGridColors(ConfigRecord& c)
{
    auto brighten = [&](int amount) {
        const int r = std::clamp((c.GridColor4 & 0xFF) + amount, 0, 255);
        const int g = std::clamp(((c.GridColor4 >> 8) & 0xFF) + amount, 0, 255);
        const int b = std::clamp(((c.GridColor4 >> 16) & 0xFF) + amount, 0, 255);
        return RGB(r, g, b);
    };
    c.gridColor[2] = brighten(60);
    c.gridColor[1] = brighten(100);
    c.gridColor[0] = brighten(130);
}

void ResetConfig(ConfigRecord& c, const std::string& programFolder)
{
    c = ConfigRecord{};
    c.BGLPath = programFolder + "Export.bgl";
    c.SCAPath = programFolder + "Export.txt";
    c.TEXPath = programFolder + "Texture/";
    c.APIPath = programFolder + "API/";
    c.macroComboPosition = 0;
    c.FWTPath = programFolder;
    c.ImportPath = programFolder;
    c.BackPicturePath = programFolder;
    c.FSPath = "C:\\Programs\\FS\\";
    c.SceneryPath = programFolder;
    c.defaultName = "Shapes";
    c.GridDist = {50, 200, 1000};
    c.GridColor4 = RGB(122, 106, 82);
    DeriveGridColors(c);
    c.WinWidth = 640;
    c.WinHeight = 480;
    c.WinStatus = 0;
    c.EnableOpenGL = 0;
    c.MessageScale = c.MessageRotate = c.MessageConvert = 1;
    c.MessageDelete = c.MessageLayer = c.MessageCompile = 1;
    c.rotateCenterX = c.rotateCenterY = 0;
    c.scaleX = c.scaleY = 1.0;
    c.keepAspect = 1;
    c.numMacros = 3;
    c.macroFiles[0] = "fwt_building1.api";
    c.macroFiles[1] = "fwt_building2.api";
    c.macroFiles[2] = "fwt_b737.api";
    c.macroDescriptions[0] = "Simple building (4 walls)";
    c.macroDescriptions[1] = "Simple building (8 walls)";
    c.macroDescriptions[2] = "Boeing 737-400";
    c.forest[0] = {0, "fwt_forest1.bmp",
                   {"fwt_foresttop_dark1.bmp", "fwt_foresttop_dark2.bmp", "fwt_foresttop_dark3.bmp"}};
    c.forest[1] = {0, "fwt_forestc1.bmp",
                   {"fwt_foresttopc_11.bmp", "fwt_foresttopc_12.bmp", "fwt_foresttopc_13.bmp"}};
    const int types[6] = {kPoly, kTexPoly, kWideLine, kDotLine, kTreeLine, kForest};
    for (int i = 0; i < 6; ++i) {
        c.defaultShapes[i] = ShapeRecord{};
        ResetShape(c.defaultShapes[i], types[i]);
    }
}

} // namespace fw
