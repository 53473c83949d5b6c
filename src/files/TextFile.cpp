#include "files/TextFile.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fw {

namespace {
// The lines of a project are short (a key and its value, a point): a plain walk over their
// characters costs less than a library search per token.
template <class Out>
void Tokenise(std::string_view line, Out&& append)
{
    const char* const text = line.data();
    std::size_t i = 0;
    const std::size_t n = line.size();
    while (i < n) {
        // A "=" is stepped over and the next character looked at afresh, so that a run of them
        // is passed whole and never makes an empty token.
        const char first = text[i];
        if (first == '=') {
            ++i;
            continue;
        }
        // The rest of the line is a comment.
        if (first == ';')
            return;
        std::size_t end = i + 1;
        if (first == '"') {
            while (end < n && text[end] != '"')
                ++end;
            if (end < n)
                ++end; // the closing quote belongs to the token
        } else {
            while (end < n && text[end] != '=')
                ++end;
        }
        append(std::string_view(text + i, end - i));
        i = end;
    }
}
} // namespace

void TokeniseLine(std::string_view line, Tokens& out)
{
    Tokenise(line, [&](std::string_view t) { out.push_back(t); });
}

void TokeniseLine(std::string_view line, CBufferS& buffer)
{
    Tokenise(line, [&](std::string_view t) { buffer.addLine(std::string(t)); });
}

void TokeniseText(std::string_view text, Tokens& out)
{
    // The rules of Tokenise on every line (ForEachLine's: up to "\n", less one "\r" before it),
    // in one walk over the text: a "\n" ends the token it meets.
    const char* const all = text.data();
    const std::size_t n = text.size();
    out.reserve(out.size() + n / 10);
    std::size_t i = 0;
    while (i < n) {
        const char first = all[i];
        if (first == '\n' || first == '=') {
            ++i;
            continue;
        }
        if (first == ';') {
            while (i < n && all[i] != '\n')
                ++i;
            continue;
        }
        std::size_t end = i + 1;
        if (first == '"') {
            while (end < n && all[end] != '"' && all[end] != '\n')
                ++end;
            if (end < n && all[end] == '"') {
                out.emplace_back(all + i, end + 1 - i);
                i = end + 1;
                continue;
            }
        } else {
            while (end < n && all[end] != '=' && all[end] != '\n')
                ++end;
        }
        // A token that runs to the end of its line leaves out the "\r" of a CR LF line end; one
        // that was that "\r" alone is no token.
        const std::size_t last = all[end - 1] == '\r' && (end == n || all[end] == '\n') ? end - 1 : end;
        if (last > i)
            out.emplace_back(all + i, last - i);
        i = end;
    }
}

bool ReadWholeFile(const std::string& path, std::string& out, std::uint64_t maxBytes, std::string* reason)
{
    return ReadRegularFile(path, maxBytes, out, reason);
}

std::string JoinLines(const std::vector<std::string>& lines)
{
    std::size_t size = 0;
    for (const auto& l : lines)
        size += l.size() + 2;
    std::string text;
    text.reserve(size);
    for (const auto& l : lines) {
        text += l;
        text += "\r\n";
    }
    return text;
}

namespace {

std::string HostText(int error)
{
    return std::system_category().message(error);
}

// The file a path names once its symbolic links are followed: writing through a link replaces
// the file it points to and keeps the link. A link that points nowhere names the file it would
// point to, which the write then makes.
bool FollowLinks(const std::string& path, std::string& target, std::string& reason)
{
    namespace fs = std::filesystem;
    fs::path p(path);
    for (int hops = 0; hops < 40; ++hops) {
        struct stat st {};
        if (::lstat(p.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) {
            target = p.string();
            return true;
        }
        std::error_code ec;
        const fs::path next = fs::read_symlink(p, ec);
        if (ec) {
            reason = ec.message();
            return false;
        }
        p = next.is_absolute() ? next : p.parent_path() / next;
    }
    reason = HostText(ELOOP);
    return false;
}

} // namespace

bool WriteTextReplacing(const std::string& path, std::string_view text, bool flushed, std::string* reasonOut)
{
    std::string reason;
    const bool ok = [&] {
        if (path.empty()) {
            reason = HostText(ENOENT);
            return false;
        }
        std::string target;
        if (!FollowLinks(path, target, reason))
            return false;
        // What stands there must be a file that may be written: a folder, a device or a pipe is
        // not replaced, and neither is a read-only file (whoever the program runs as).
        struct stat st {};
        const bool exists = ::stat(target.c_str(), &st) == 0;
        if (exists) {
            if (S_ISDIR(st.st_mode)) {
                reason = HostText(EISDIR);
                return false;
            }
            if (!S_ISREG(st.st_mode)) {
                reason = "Not a regular file";
                return false;
            }
            if ((st.st_mode & 0222) == 0 || ::access(target.c_str(), W_OK) != 0) {
                reason = HostText(EACCES);
                return false;
            }
        }
        namespace fs = std::filesystem;
        const fs::path file(target);
        fs::path folder = file.parent_path();
        if (folder.empty())
            folder = ".";
        std::string pattern = (folder / ("." + file.filename().string() + ".XXXXXX")).string();
        std::vector<char> name(pattern.begin(), pattern.end());
        name.push_back('\0');
        const int fd = ::mkstemp(name.data());
        if (fd < 0) {
            reason = HostText(errno);
            return false;
        }
        bool written = true;
        std::size_t done = 0;
        while (written && done < text.size()) {
            const ssize_t w = ::write(fd, text.data() + done, text.size() - done);
            if (w < 0) {
                if (errno == EINTR)
                    continue;
                reason = HostText(errno);
                written = false;
            } else {
                done += static_cast<std::size_t>(w);
            }
        }
        if (written) {
            // Keep the old file's permissions; a new file gets the usual ones.
            if (exists) {
                ::fchmod(fd, st.st_mode & 07777);
            } else {
                const mode_t mask = ::umask(0);
                ::umask(mask);
                ::fchmod(fd, 0666 & ~mask);
            }
            if (flushed && ::fsync(fd) != 0) {
                reason = HostText(errno);
                written = false;
            }
        }
        if (::close(fd) != 0 && written) {
            reason = HostText(errno);
            written = false;
        }
        if (written && std::rename(name.data(), target.c_str()) != 0) {
            reason = HostText(errno);
            written = false;
        }
        if (!written)
            ::unlink(name.data());
        return written;
    }();
    if (!ok && reasonOut)
        *reasonOut = reason;
    return ok;
}

bool WriteLinesReplacing(const std::string& path, const std::vector<std::string>& lines, std::string* reason)
{
    return WriteTextReplacing(path, JoinLines(lines), true, reason);
}

} // namespace fw
