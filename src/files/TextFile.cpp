#include "files/TextFile.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fw {

namespace {
template <class Out>
void Tokenise(std::string_view line, Out&& append)
{
    std::size_t i = 0;
    const std::size_t n = line.size();
    while (i < n) {
        if (line[i] == '=') {
            ++i;
            if (i >= n)
                break;
        }
        std::size_t end;
        if (line[i] == '"') {
            std::size_t close = line.find('"', i + 1);
            end = close == std::string_view::npos ? n : close + 1;
        } else {
            std::size_t eq = line.find('=', i);
            end = eq == std::string_view::npos ? n : eq;
        }
        std::string_view token = line.substr(i, end - i);
        if (!token.empty() && token[0] == ';')
            return; // the rest of the line is a comment
        append(token);
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
    ForEachLine(text, [&](std::string_view line) { TokeniseLine(line, out); });
}

bool ReadWholeFile(const std::string& path, std::string& out)
{
    out.clear();
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec))
        return false;
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f)
        return false;
    char buf[65536];
    std::size_t got;
    while ((got = std::fread(buf, 1, sizeof buf, f)) > 0)
        out.append(buf, got);
    const bool ok = !std::ferror(f);
    std::fclose(f);
    return ok;
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

bool WriteTextReplacing(const std::string& path, std::string_view text, bool flushed)
{
    if (path.empty())
        return false;
    namespace fs = std::filesystem;
    std::error_code ec;
    if (fs::is_directory(path, ec))
        return false;
    fs::path target(path);
    fs::path folder = target.parent_path();
    if (folder.empty())
        folder = ".";
    std::string pattern = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    const int fd = ::mkstemp(name.data());
    if (fd < 0)
        return false;
    bool ok = true;
    std::size_t done = 0;
    while (ok && done < text.size()) {
        const ssize_t w = ::write(fd, text.data() + done, text.size() - done);
        if (w < 0) {
            if (errno == EINTR)
                continue;
            ok = false;
        } else {
            done += static_cast<std::size_t>(w);
        }
    }
    if (ok) {
        // Keep the old file's permissions; a new file gets the usual ones.
        struct stat st {};
        if (::stat(path.c_str(), &st) == 0)
            ::fchmod(fd, st.st_mode & 07777);
        else {
            const mode_t mask = ::umask(0);
            ::umask(mask);
            ::fchmod(fd, 0666 & ~mask);
        }
        if (flushed)
            ok = ::fsync(fd) == 0;
    }
    if (::close(fd) != 0)
        ok = false;
    if (ok && std::rename(name.data(), path.c_str()) != 0)
        ok = false;
    if (!ok)
        ::unlink(name.data());
    return ok;
}

bool WriteLinesReplacing(const std::string& path, const std::vector<std::string>& lines)
{
    return WriteTextReplacing(path, JoinLines(lines));
}

} // namespace fw
