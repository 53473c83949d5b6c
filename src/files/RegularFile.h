// The one way every reader opens a file: only a regular file is opened (a folder, a device, a
// named pipe or a socket is refused without blocking and without reading), and no more is read
// than the reader's format can hold.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fw {

// What the formats can hold, in bytes; a larger file is refused, not read.
// A project or selection at the program's limits (800 shapes of 80 points, 800 objects) is under
// 3 MB; the reader takes up to 32767 records of each kind from files made elsewhere.
constexpr std::uint64_t kMaxProjectBytes = 64ull << 20;
// The configuration: paths, flags, the recent list and six default shapes.
constexpr std::uint64_t kMaxConfigBytes = 4ull << 20;
// A macro file (SCASM source with its keyword comments).
constexpr std::uint64_t kMaxMacroBytes = 16ull << 20;
// SCASM text as the export writes it (a project at the program's limits makes a few MB).
constexpr std::uint64_t kMaxScasmBytes = 64ull << 20;
// A replay script of editor events.
constexpr std::uint64_t kMaxScriptBytes = 16ull << 20;
// The compiler's log, as shown to the user.
constexpr std::uint64_t kMaxLogBytes = 4ull << 20;

class RegularFile {
public:
    RegularFile() = default;
    ~RegularFile();
    RegularFile(const RegularFile&) = delete;
    RegularFile& operator=(const RegularFile&) = delete;

    // Opens path for reading when it names a regular file (through any symbolic links). Never
    // blocks: a named pipe or a device is refused before it is opened. False with reason() set
    // in the host's words ("No such file or directory", "Is a directory", ...).
    bool Open(const std::string& path);
    bool isOpen() const { return fd_ >= 0; }
    void Close();
    // The size when it was opened.
    std::uint64_t size() const { return size_; }

    // Up to count bytes from offset into dst; got is what was read (less at the end of the
    // file). False on a read error (reason() set).
    bool ReadAt(std::uint64_t offset, void* dst, std::size_t count, std::size_t& got);
    // The whole file, when it holds at most maxBytes; a longer one is refused unread.
    bool ReadAll(std::uint64_t maxBytes, std::string& out);
    bool ReadAll(std::uint64_t maxBytes, std::vector<unsigned char>& out);

    const std::string& reason() const { return reason_; }

private:
    template <class Bytes>
    bool ReadAllInto(std::uint64_t maxBytes, Bytes& out);

    int fd_ = -1;
    std::uint64_t size_ = 0;
    std::string reason_;
};

// The whole of a regular file of at most maxBytes. False otherwise (out empty); reason, when
// given, says why in the host's words.
bool ReadRegularFile(const std::string& path, std::uint64_t maxBytes, std::string& out,
                     std::string* reason = nullptr);

// The second line a reader's message may carry: "'path': reason".
std::string FileReasonLine(const std::string& path, const std::string& reason);
// text, then on a line of its own the file and the reason; text alone when there is no reason.
std::string WithFileReason(const std::string& text, const std::string& path, const std::string& reason);

} // namespace fw
