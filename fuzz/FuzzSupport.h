// What the fuzz targets share: a private temporary folder, an input cut in two at its first NUL,
// a reader of the bytes after it, and a project read from memory put into a session as the load
// flow puts it, without opening any file the project names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/Session.h"
#include "files/ProjectFile.h"
#include "files/ProjectFlows.h"

namespace fw::fuzz {

// The program folder of every target: a folder that isn't there, so that no built-in macro,
// texture or configuration is read from disk and a run never depends on what is installed.
inline constexpr const char* kProgramFolder = "/opt/fw/";

// A folder of this process under the system's temporary folder (TMPDIR), made on first use and
// removed at exit. Clear() empties it, so that every input starts from the same files.
class TempFolder {
public:
    explicit TempFolder(const char* tag)
    {
        std::error_code ec;
        std::string pattern = (std::filesystem::temp_directory_path(ec) / (std::string(tag) + ".XXXXXX")).string();
        if (ec)
            pattern = std::string("/tmp/") + tag + ".XXXXXX";
        if (::mkdtemp(pattern.data()) == nullptr)
            std::abort();
        path_ = pattern;
    }
    ~TempFolder()
    {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& path() const { return path_; }
    // A name inside the folder.
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

    void Clear() const
    {
        std::error_code ec;
        for (std::filesystem::directory_iterator it(path_, ec), end; !ec && it != end; it.increment(ec)) {
            std::error_code ignored;
            std::filesystem::remove_all(it->path(), ignored);
        }
    }

private:
    std::string path_;
};

// The bytes before the first NUL, and those after it (empty when there is no NUL).
struct Parts {
    std::string_view head;
    std::string_view tail;
    bool hasTail = false;
};

inline Parts SplitAtNul(const std::uint8_t* data, std::size_t size)
{
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    const std::size_t nul = all.find('\0');
    if (nul == std::string_view::npos)
        return {all, {}, false};
    return {all.substr(0, nul), all.substr(nul + 1), true};
}

// Bytes taken in order; past the end every read gives 0 and done() is true.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes) : bytes_(bytes) {}

    bool done() const { return at_ >= bytes_.size(); }
    std::uint8_t Byte() { return done() ? 0 : static_cast<std::uint8_t>(bytes_[at_++]); }
    std::uint16_t U16()
    {
        const std::uint16_t lo = Byte();
        return static_cast<std::uint16_t>(lo | (Byte() << 8));
    }
    std::uint32_t U32()
    {
        const std::uint32_t lo = U16();
        return lo | (static_cast<std::uint32_t>(U16()) << 16);
    }
    // lo to hi inclusive, from two bytes.
    int Range(int lo, int hi)
    {
        const auto span = static_cast<std::uint32_t>(hi - lo) + 1;
        return lo + static_cast<int>(U16() % span);
    }
    template <class T, std::size_t N>
    const T& Pick(const T (&items)[N])
    {
        return items[Byte() % N];
    }

private:
    std::string_view bytes_;
    std::size_t at_ = 0;
};

// The load flow's steps after the file was read, on data already read: no macro file or
// background image is read.
inline void TakeProject(Session& s, ProjectData&& data, const std::string& path)
{
    TakeProjectData(s, std::move(data), path);
    SelectFirstItem(s);
}

} // namespace fw::fuzz
