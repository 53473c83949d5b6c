#include "files/RegularFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <system_error>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fw {

namespace {

std::string HostReason(int error)
{
    return std::system_category().message(error);
}

// Why a file of this kind is no file to read; empty for a regular file.
std::string KindReason(mode_t mode)
{
    if (S_ISREG(mode))
        return {};
    if (S_ISDIR(mode))
        return HostReason(EISDIR);
    if (S_ISFIFO(mode))
        return "Not a regular file (a named pipe)";
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return "Not a regular file (a device)";
    if (S_ISSOCK(mode))
        return "Not a regular file (a socket)";
    return "Not a regular file";
}

std::string TooLarge(std::uint64_t maxBytes)
{
    return HostReason(EFBIG) + " (more than " + std::to_string(maxBytes) + " bytes)";
}

} // namespace

RegularFile::~RegularFile()
{
    Close();
}

void RegularFile::Close()
{
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
    size_ = 0;
}

bool RegularFile::Open(const std::string& path)
{
    Close();
    reason_.clear();
    if (path.empty()) {
        reason_ = HostReason(ENOENT);
        return false;
    }
    // The kind is looked at before anything is opened: opening a pipe or a device can block or
    // have effects of its own.
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) {
        reason_ = HostReason(errno);
        return false;
    }
    if (std::string why = KindReason(st.st_mode); !why.empty()) {
        reason_ = std::move(why);
        return false;
    }
    // Non-blocking, so that a pipe put in the file's place since the look can't hold the open.
    int fd;
    do {
        fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    } while (fd < 0 && errno == EINTR);
    if (fd < 0) {
        reason_ = HostReason(errno);
        return false;
    }
    if (::fstat(fd, &st) != 0) {
        reason_ = HostReason(errno);
        ::close(fd);
        return false;
    }
    if (std::string why = KindReason(st.st_mode); !why.empty()) {
        reason_ = std::move(why);
        ::close(fd);
        return false;
    }
    const int flags = ::fcntl(fd, F_GETFL);
    if (flags >= 0)
        ::fcntl(fd, F_SETFL, flags & ~O_NONBLOCK);
    fd_ = fd;
    size_ = st.st_size > 0 ? static_cast<std::uint64_t>(st.st_size) : 0;
    return true;
}

bool RegularFile::ReadAt(std::uint64_t offset, void* dst, std::size_t count, std::size_t& got)
{
    got = 0;
    if (fd_ < 0) {
        reason_ = HostReason(EBADF);
        return false;
    }
    auto* out = static_cast<unsigned char*>(dst);
    while (got < count) {
        const ssize_t r = ::pread(fd_, out + got, count - got, static_cast<off_t>(offset + got));
        if (r < 0) {
            if (errno == EINTR)
                continue;
            reason_ = HostReason(errno);
            return false;
        }
        if (r == 0)
            break;
        got += static_cast<std::size_t>(r);
    }
    return true;
}

template <class Bytes>
bool RegularFile::ReadAllInto(std::uint64_t maxBytes, Bytes& out)
{
    out.clear();
    if (fd_ < 0) {
        reason_ = HostReason(EBADF);
        return false;
    }
    if (size_ > maxBytes) {
        reason_ = TooLarge(maxBytes);
        return false;
    }
    // The size is a hint only: a file that grows while it is read is still cut off at the bound,
    // and one byte more than the bound tells such a file from one that ends there.
    const std::uint64_t limit = maxBytes < UINT64_MAX ? maxBytes + 1 : maxBytes;
    out.resize(static_cast<std::size_t>(std::min<std::uint64_t>(size_ + 1, limit)));
    std::size_t have = 0;
    while (true) {
        if (have == out.size()) {
            if (have >= limit)
                break;
            const std::uint64_t grown = have + std::max<std::size_t>(have, 65536);
            out.resize(static_cast<std::size_t>(std::min<std::uint64_t>(grown, limit)));
        }
        const std::size_t want = out.size() - have;
        std::size_t got = 0;
        if (!ReadAt(have, out.data() + have, want, got)) {
            out.clear();
            return false;
        }
        have += got;
        if (got < want)
            break; // the end of the file
    }
    out.resize(have);
    if (have > maxBytes) {
        out.clear();
        reason_ = TooLarge(maxBytes);
        return false;
    }
    return true;
}

bool RegularFile::ReadAll(std::uint64_t maxBytes, std::string& out)
{
    return ReadAllInto(maxBytes, out);
}

bool RegularFile::ReadAll(std::uint64_t maxBytes, std::vector<unsigned char>& out)
{
    return ReadAllInto(maxBytes, out);
}

bool ReadRegularFile(const std::string& path, std::uint64_t maxBytes, std::string& out, std::string* reason)
{
    out.clear();
    RegularFile f;
    const bool ok = f.Open(path) && f.ReadAll(maxBytes, out);
    if (!ok && reason)
        *reason = f.reason();
    return ok;
}

std::string FileReasonLine(const std::string& path, const std::string& reason)
{
    return "'" + path + "': " + reason;
}

std::string WithFileReason(const std::string& text, const std::string& path, const std::string& reason)
{
    if (reason.empty())
        return text;
    return text + "\n" + FileReasonLine(path, reason);
}

} // namespace fw
