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
    struct Joined {};
    CBufferS() = default;
    // A buffer that joins its lines into one text as they come, each ended by CR LF: the text of
    // a whole project is made without a string per line. Its lines() stay empty.
    explicit CBufferS(Joined) : joined_(true) {}

    void reset()
    {
        lines_.clear();
        text_.clear();
        count_ = 0;
    }
    void reserve(std::size_t lines)
    {
        if (joined_)
            text_.reserve(lines * kJoinedLineBytes);
        else
            lines_.reserve(lines);
    }
    bool addLine(std::string_view text)
    {
        ++count_;
        if (joined_) {
            text_.append(text);
            text_.append("\r\n");
        } else {
            lines_.emplace_back(text);
        }
        return true;
    }
    bool addLine(std::string&& text)
    {
        if (joined_)
            return addLine(std::string_view(text));
        ++count_;
        lines_.push_back(std::move(text));
        return true;
    }
    bool addLine(const char* text) { return addLine(std::string_view(text)); }
    // False when empty.
    bool GetAll(std::vector<std::string>& out) const
    {
        out = lines_;
        return !lines_.empty();
    }
    int count() const { return static_cast<int>(count_); }
    const std::vector<std::string>& lines() const { return lines_; }
    // The joined text; empty unless the buffer joins.
    std::string& text() { return text_; }

private:
    // A point line and its line end, near enough for most lines of a project.
    static constexpr std::size_t kJoinedLineBytes = 16;
    bool joined_ = false;
    std::size_t count_ = 0;
    std::vector<std::string> lines_;
    std::string text_;
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
