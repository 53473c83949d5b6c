// The user's preferences, kept in the configuration file beside the program.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/Records.h"

namespace fw {

constexpr int kMaxMacros = 257;

struct ForestTextures {
    std::uint8_t flag = 0;
    std::string side;
    std::array<std::string, 3> top;
};

struct ConfigRecord {
    std::string BGLPath;
    std::string SCAPath;
    std::string TEXPath;
    std::string APIPath;
    std::uint8_t macroComboPosition = 0;
    std::string FWTPath;
    std::string ImportPath;
    std::string BackPicturePath;
    std::string FSPath;
    std::string SceneryPath;
    std::string defaultName;
    std::array<std::int16_t, 3> GridDist{};   // GridDist1..3
    std::array<std::int32_t, 3> gridColor{};  // derived from GridColor4
    std::int32_t GridColor4 = 0;
    std::int32_t WinWidth = 0;
    std::int32_t WinHeight = 0;
    std::int32_t WinStatus = 0;
    std::uint8_t EnableOpenGL = 0;
    std::uint8_t MessageScale = 0;
    std::uint8_t MessageRotate = 0;
    std::uint8_t MessageConvert = 0;
    std::uint8_t MessageDelete = 0;
    std::uint8_t MessageLayer = 0;
    std::uint8_t MessageCompile = 0;
    std::int32_t rotateCenterX = 0;
    std::int32_t rotateCenterY = 0;
    double scaleX = 0;
    double scaleY = 0;
    std::uint8_t keepAspect = 0;
    std::int16_t numMacros = 0;
    std::array<std::string, kMaxMacros> macroFiles;
    std::array<std::string, kMaxMacros> macroDescriptions;
    std::array<ForestTextures, 2> forest;
    // Default records of Poly, TexPoly, WideLine, DotLine, TreeLine, Forest.
    std::array<ShapeRecord, 6> defaultShapes;
};

// Index of a drawable type in ConfigRecord::defaultShapes, or -1.
int DefaultShapeIndex(int type);

// Colours 3, 2, 1 are colour 4 brightened by 60, 100, 130.
void DeriveGridColors(ConfigRecord& c);

// All defaults, paths built on the program folder (which ends in a separator).
void ResetConfig(ConfigRecord& c, const std::string& programFolder);

} // namespace fw
