#include "dialogs/FormValues.h"

#include <charconv>

#include "core/Numbers.h"

namespace fw {

std::string FormValues::Text(const std::string& name) const
{
    auto it = values_.find(name);
    return it == values_.end() ? std::string() : it->second;
}

int FormValues::Int(const std::string& name) const
{
    const std::string t = Text(name);
    int v = 0;
    auto res = std::from_chars(t.data(), t.data() + t.size(), v);
    if (res.ec != std::errc() || res.ptr != t.data() + t.size())
        return 0;
    return v;
}

std::string ShowNumber(double v, char decimalSeparator) { return LocalReal(v, decimalSeparator); }

int DecimalKey(int key, char decimalSeparator)
{
    const std::string to(2, decimalSeparator);
    return KeyMap(key, ",.", to);
}

int NameKey(int key)
{
    key = KeyRemove(key, ";\"");
    return key == ' ' ? '_' : key;
}

int TextKey(int key) { return KeyRemove(key, ";\""); }

} // namespace fw
