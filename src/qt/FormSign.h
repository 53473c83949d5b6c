// The taxiway sign form and its cell picker on Qt, over the FormSign model.
#pragma once

#include <string>

#include <QImage>
#include <QWidget>

#include "core/Helpers.h"
#include "core/Records.h"

namespace fw::qt {

// sheetPath: the sign sheet "fwt_sign1.bmp" in the texture folder.
bool RunFormSign(ObjectRecord& record, const ValueContext& ctx, const std::string& sheetPath,
                 const std::string& programFolder, QWidget* parent);

// FormSignSelect: the sheet's cells of a cell type; false when closed without a choice. "&Remove"
// gives the empty item.
bool RunFormSignSelect(const QImage& sheet, const std::string& cellType, const std::string& current, std::string& item,
                       QWidget* parent);

} // namespace fw::qt
