// The texture picker and the palette colour picker on Qt.
#pragma once

#include <cstdint>
#include <string>

#include <QWidget>

namespace fw::qt {

// FormTex: the files of the texture folder with a preview. False for "&Cancel"; "&No texture"
// (shown when allowNone) gives the empty name.
bool RunFormTex(const QString& title, const std::string& folder, const std::string& programFolder,
                const std::string& current, bool allowNone, std::string& name, QWidget* parent);

// The average colour of a texture as 0x00BBGGRR; false when the file can't be read.
bool AverageTextureColor(const std::string& path, const std::string& programFolder, std::int32_t& color);

// FormColor, "Pick color": a palette index; false when cancelled.
bool RunFormColor(const std::string& programFolder, int& index, QWidget* parent);

} // namespace fw::qt
