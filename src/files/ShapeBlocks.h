// The seven shape blocks: the shape word, its keys, the point block and ")".
#pragma once

#include <cstddef>
#include <string_view>

#include "core/Records.h"
#include "files/TextFile.h"

namespace fw {

// "Poly(" ... "Forest("; empty for a type that is no shape.
std::string_view ShapeWord(int type);
// The type of a shape word, 0 for any other token.
int ShapeTypeOfWord(std::string_view token);

// The shape word, its keys in the written order of its type, the point block and ")".
void WriteShapeBlock(CBufferS& out, const ShapeRecord& shape, const PointList& points);

// Reads the keys of a block of the type from start (the token after the word) into shape,
// which starts from the type's defaults; the derived strings are resolved at the end. Returns
// the index of the closing ")" or kNoClose.
std::size_t ReadShapeKeys(const Tokens& t, std::size_t start, int type, ShapeRecord& shape);
// The points of the block between start and its closing ")"; the last "Data[" wins.
void ReadShapePoints(const Tokens& t, std::size_t start, std::size_t close, PointList& points);
// One point line " X, Y"; false when the token is no point.
bool ParsePoint(std::string_view token, Point& p);

} // namespace fw
