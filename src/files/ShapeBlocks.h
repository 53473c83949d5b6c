// The seven shape blocks: the shape word, its keys, the point block and ")".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

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
// The point walk of a shape is its own walk, not bounded by the key loop: from start (the token
// after the shape word) to the first ")" met outside a "Data[" list. A list runs to its "]" (or
// to the end of the tokens); a ")" inside it is a token that fails the point test. Every "Data["
// restarts the list, so the last one wins. The walks of a damaged file can overlap (a ")" inside
// a list); what a walk needs is worked out once for the whole token array, so that each walk costs
// no more than the points it returns.
class ShapePointWalks {
public:
    explicit ShapePointWalks(const Tokens& t);
    // The points of the shape whose word stands before start. False, with points unspecified,
    // when the list holds more than maxPoints.
    bool Read(std::size_t start, std::size_t maxPoints, PointList& points) const;
    // How many tokens are points.
    std::size_t pointTokens() const { return pointTokens_; }

private:
    const Tokens& t_;
    // [p]: the "Data[" whose list a walk from p returns, or kNone.
    std::vector<std::uint32_t> lastList_;
    // [p]: the first token at or after p that is "]" or a point, or the token count.
    std::vector<std::uint32_t> nextInList_;
    std::size_t pointTokens_ = 0;
};
// One walk on its own (the whole array is looked at once).
void ReadShapePoints(const Tokens& t, std::size_t start, PointList& points);

enum class PointWalkEnd { Done, TooMany, PastBlock };
// The walk as long as it stays within its block, start to close (the ")" that ended the key
// loop), which costs no more than the key loop did. Done with the points; TooMany when the list
// holds more than maxPoints; PastBlock when a list runs on past close (a ")" inside a list), which
// only the whole-array walks answer.
PointWalkEnd ReadShapePointsWithin(const Tokens& t, std::size_t start, std::size_t close, std::size_t maxPoints,
                                   PointList& points);
// One point line " X, Y"; false when the token is no point.
bool ParsePoint(std::string_view token, Point& p);

} // namespace fw
