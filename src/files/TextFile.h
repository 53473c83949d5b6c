// The line buffer, the tokeniser and the plain file access shared by every text file of a project.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "files/RegularFile.h"

namespace fw {

class Ui;

// Lines of a file being written (or tokens of a file being read), in order.
class CBufferS {
public:
    // The lines' storage is kept for the next text built in this buffer (see newLine).
    void reset()
    {
        spare_.clear();
        spare_.reserve(lines_.size());
        for (auto it = lines_.rbegin(); it != lines_.rend(); ++it)
            spare_.push_back(std::move(*it));
        lines_.clear();
    }
    void reserve(std::size_t lines) { lines_.reserve(lines); }
    bool addLine(std::string text)
    {
        lines_.push_back(std::move(text));
        if (!spare_.empty())
            spare_.pop_back(); // keeps each kept storage at the place of its line
        return true;
    }
    // An empty line appended to be filled in place. After a reset it takes the storage of the
    // line that stood at the same place, so a text built again needs no new memory.
    std::string& newLine()
    {
        if (spare_.empty())
            return lines_.emplace_back();
        std::string& line = lines_.emplace_back(std::move(spare_.back()));
        spare_.pop_back();
        line.clear();
        return line;
    }
    // False when empty.
    bool GetAll(std::vector<std::string>& out) const
    {
        out = lines_;
        return !lines_.empty();
    }
    int count() const { return static_cast<int>(lines_.size()); }
    const std::vector<std::string>& lines() const { return lines_; }

private:
    std::vector<std::string> lines_;
    std::vector<std::string> spare_; // storage of the lines before the last reset, first line last
};

using Tokens = std::vector<std::string_view>;

// Cuts one line into tokens: only "=" and a leading double quote divide; ";" at the start of a
// token ends the line. The tokens point into line.
void TokeniseLine(std::string_view line, Tokens& out);
// The same, appending copies to the buffer.
void TokeniseLine(std::string_view line, CBufferS& buffer);
// Every line of a text (LF or CR LF) tokenised; the tokens point into text.
void TokeniseText(std::string_view text, Tokens& out);
// Calls f for every line of a text, without its line end.
template <class F>
void ForEachLine(std::string_view text, F&& f)
{
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t end = text.find('\n', pos);
        std::size_t next = end == std::string_view::npos ? text.size() : end + 1;
        if (end == std::string_view::npos)
            end = text.size();
        std::string_view line = text.substr(pos, end - pos);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        f(line);
        pos = next;
    }
}

// The whole file as bytes, through RegularFile: only a regular file of at most maxBytes is read.
// False when it can't be read; reason, when given, then says why in the host's words.
bool ReadWholeFile(const std::string& path, std::string& out, std::uint64_t maxBytes = kMaxProjectBytes,
                   std::string* reason = nullptr);
// Writes every line with CR LF into a temporary file beside path and renames it over path, so
// that a failed write leaves the old file as it was. A symbolic link is followed: the file it
// names is replaced and the link stays. A read-only file, a folder, a device or a pipe is not
// replaced. False on any failure; reason, when given, then says why in the host's words.
bool WriteLinesReplacing(const std::string& path, const std::vector<std::string>& lines,
                         std::string* reason = nullptr);
// flushed: the bytes are on the disk before the rename. A file that can be made again at any time
// (an export) may skip the wait; the rename still keeps a failed write from touching the old file.
bool WriteTextReplacing(const std::string& path, std::string_view text, bool flushed = true,
                        std::string* reason = nullptr);

// The same text joined with CR LF.
std::string JoinLines(const std::vector<std::string>& lines);

} // namespace fw
