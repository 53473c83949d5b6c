#include "files/KeyBlock.h"

namespace fw {

bool ParseValue(const KeyRule& k, std::string_view token, ParsedValue& v)
{
    switch (k.kind) {
    case ValueKind::Byte: {
        std::uint8_t b = 0;
        if (!ReadByteValue(token, static_cast<int>(k.lower), static_cast<int>(k.upper), b))
            return false;
        v.i = b;
        return true;
    }
    case ValueKind::Short: {
        std::int16_t s = 0;
        if (!ReadShortValue(token, static_cast<int>(k.lower), static_cast<int>(k.upper), s))
            return false;
        v.i = s;
        return true;
    }
    case ValueKind::Long: {
        std::int32_t l = 0;
        if (!ReadLongValue(token, l))
            return false;
        v.i = l;
        return true;
    }
    case ValueKind::Double:
        return ReadDoubleValue(token, k.lower, k.upper, v.d);
    case ValueKind::String:
        return ReadStringValue(token, v.s);
    }
    return false;
}

} // namespace fw
