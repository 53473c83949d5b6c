// The object blocks (VOR, NDB, Exclude, Api, Init, Sign) and the runway block.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "core/Records.h"
#include "files/TextFile.h"

namespace fw {

// "Runway(" ... "Sign("; empty for a type that is no object.
std::string_view ObjectWord(int type);
// The type of an object word, 0 for any other token.
int ObjectTypeOfWord(std::string_view token);

void WriteObjectBlock(CBufferS& out, const ObjectRecord& object);

// Reads the keys of a block of the type from start into object, which starts from the type's
// defaults (programFolder roots the default macro path). Returns the index of the closing ")"
// or kNoClose.
std::size_t ReadObjectKeys(const Tokens& t, std::size_t start, int type, ObjectRecord& object,
                           const std::string& programFolder);

} // namespace fw
