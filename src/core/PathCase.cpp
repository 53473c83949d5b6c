#include "core/PathCase.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace fw {

namespace {

bool SameNoCase(const std::string& a, const std::string& b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        auto lower = [](unsigned char c) { return (c >= 'A' && c <= 'Z') ? c + 32 : c; };
        if (lower(static_cast<unsigned char>(a[i])) != lower(static_cast<unsigned char>(b[i])))
            return false;
    }
    return true;
}

} // namespace

std::string FindPathNoCase(const std::string& path)
{
    std::string normal = path;
    std::replace(normal.begin(), normal.end(), '\\', '/');
    namespace fs = std::filesystem;
    std::error_code ec;
    if (normal.empty() || fs::exists(fs::path(normal), ec))
        return normal;

    std::string found = normal[0] == '/' ? "/" : "";
    std::size_t pos = 0;
    while (pos <= normal.size()) {
        std::size_t next = normal.find('/', pos);
        if (next == std::string::npos)
            next = normal.size();
        std::string part = normal.substr(pos, next - pos);
        pos = next + 1;
        if (part.empty() || part == ".") {
            continue;
        }
        std::string candidate = found + part;
        if (part != ".." && !fs::exists(fs::path(candidate), ec)) {
            fs::path folder = found.empty() ? fs::path(".") : fs::path(found);
            bool matched = false;
            for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
                std::string name = it->path().filename().string();
                if (SameNoCase(name, part)) {
                    candidate = found + name;
                    matched = true;
                    break;
                }
            }
            if (!matched)
                return normal;
        }
        found = candidate;
        if (next < normal.size())
            found += '/';
    }
    return found;
}

} // namespace fw
