// The shape properties form on Qt: four tabs over the FormShape model.
#pragma once

#include <string>

#include <QWidget>

#include "core/Config.h"
#include "core/Helpers.h"
#include "core/Records.h"

namespace fw::qt {

struct ShapeFormContext {
    ValueContext values;
    std::string programFolder;
    const ConfigRecord* config = nullptr; // TEXPath and the forest textures
    const PointList* points = nullptr;    // the shape's points, for the preview and the default map
    bool mustComplete = false;            // a new shape: OK is the only way out
};

// Edits the record; true when OK stored the values.
bool RunFormShape(ShapeRecord& record, const ShapeFormContext& context, QWidget* parent);

// The texture picture of a file in the texture folder, label and size for its caption; an
// unreadable file gives the fallback picture.
QImage TexturePicture(const std::string& path, const std::string& programFolder, int width, int height,
                      std::string& label);

} // namespace fw::qt
