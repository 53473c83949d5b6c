// What every item exporter receives: the project, the scale factors and the text being built.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "core/Config.h"
#include "core/Random.h"
#include "core/Records.h"
#include "export/ScasmForms.h"
#include "files/TextFile.h"

namespace fw {

// The exporter's own line buffer: nothing reaches the disk before the text is complete. The lines
// stand in one block, each ended by CR LF, so the finished text is the file's bytes as they are.
class ExportBuffer {
public:
    ExportBuffer() = default;
    ExportBuffer(const ExportBuffer&) = delete;
    ExportBuffer& operator=(const ExportBuffer&) = delete;
    ~ExportBuffer() { std::free(data_); }

    // The block's memory is kept for the next text built in this buffer.
    void reset()
    {
        size_ = 0;
        count_ = 0;
    }
    void addLine(std::string_view line)
    {
        append(line);
        endLine();
    }
    // Pieces appended to the open line, then endLine.
    void append(std::string_view piece)
    {
        const std::size_t n = piece.size();
        if (capacity_ - size_ < n)
            grow(n);
        CopyPiece(data_ + size_, piece.data(), n);
        size_ += n;
    }
    // One whole line from its pieces (see appendPieces), ended by CR LF.
    template <class... Pieces>
    void addPieces(const Pieces&... pieces)
    {
        appendPieces(pieces..., "\r\n");
        ++count_;
    }
    // Pieces appended to the open line: one test for room, then copies chosen by the kind of each
    // piece, through a local pointer (stores through a char pointer could change the buffer's own
    // fields, so a pointer kept in the object would be read again after every piece). A number
    // written in place is as long as it turns out, so the room tested is the most it can take.
    // Gives how many characters they took.
    template <class... Pieces>
    std::size_t appendPieces(const Pieces&... pieces)
    {
        const std::size_t room = (PieceRoom(pieces) + ... + 0);
        if (capacity_ - size_ < room + kSlack)
            grow(room + kSlack);
        char* const from = data_ + size_;
        char* to = from;
        ((to = Put(to, pieces)), ...);
        const auto n = static_cast<std::size_t>(to - from);
        size_ += n;
        return n;
    }
    void endLine()
    {
        if (capacity_ - size_ < 2)
            grow(2);
        data_[size_] = '\r';
        data_[size_ + 1] = '\n';
        size_ += 2;
        ++count_;
    }
    // Appends again the lines that stand from byte from to byte to: lines of them.
    void repeat(std::size_t from, std::size_t to, std::size_t lines)
    {
        const std::size_t n = to - from;
        if (n == 0)
            return;
        if (capacity_ - size_ < n)
            grow(n);
        std::memcpy(data_ + size_, data_ + from, n);
        count_ += lines;
        size_ += n;
    }
    // Takes back every line after a mark of size() and count().
    void rewind(std::size_t size, int count)
    {
        size_ = std::min(size, size_);
        count_ = static_cast<std::size_t>(std::max(0, count));
    }
    std::size_t size() const { return size_; }
    std::string_view text() const { return {data_, size_}; }
    int count() const { return static_cast<int>(count_); }
    // The lines without their ends, as separate strings.
    std::vector<std::string> lines() const
    {
        std::vector<std::string> out;
        out.reserve(count_);
        ForEachLine(text(), [&](std::string_view line) { out.emplace_back(line); });
        return out;
    }

private:
    // A number form is copied or written whole, its unused tail landing in room the line doesn't keep.
    static constexpr std::size_t kSlack = std::max(sizeof(NumberText::text), kFormReach);

    static std::size_t PieceRoom(std::string_view piece) { return piece.size(); }
    static std::size_t PieceRoom(const NumberText& piece) { return piece.size; }
    static constexpr std::size_t PieceRoom(IntForm) { return 20; }
    template <std::uint8_t Width>
    static constexpr std::size_t PieceRoom(FixedForm<Width>)
    {
        return Width;
    }
    // A quoted text of the program: its length is known when it is compiled.
    template <std::size_t N>
    static constexpr std::size_t PieceRoom(const char (&)[N])
    {
        return N - 1;
    }
    static char* Put(char* to, std::string_view piece)
    {
        CopyPiece(to, piece.data(), piece.size());
        return to + piece.size();
    }
    static char* Put(char* to, const NumberText& piece)
    {
        std::memcpy(to, piece.text, sizeof piece.text);
        return to + piece.size;
    }
    static char* Put(char* to, IntForm piece) { return WriteInt(to, piece.value); }
    template <std::uint8_t Width>
    static char* Put(char* to, FixedForm<Width> piece)
    {
        return WriteFixed<Width>(to, piece.value);
    }
    template <std::size_t N>
    static char* Put(char* to, const char (&piece)[N])
    {
        std::memcpy(to, piece, N - 1);
        return to + (N - 1);
    }

    // Most pieces are a few characters: fixed-size copies of overlapping halves beat a call.
    static void CopyPiece(char* to, const char* from, std::size_t n)
    {
        if (n > 32) {
            std::memcpy(to, from, n);
        } else if (n > 16) {
            std::memcpy(to, from, 16);
            std::memcpy(to + n - 16, from + n - 16, 16);
        } else if (n >= 8) {
            std::memcpy(to, from, 8);
            std::memcpy(to + n - 8, from + n - 8, 8);
        } else if (n >= 4) {
            std::memcpy(to, from, 4);
            std::memcpy(to + n - 4, from + n - 4, 4);
        } else if (n > 0) {
            to[0] = from[0];
            to[n / 2] = from[n / 2];
            to[n - 1] = from[n - 1];
        }
    }
    // The block at least doubles; realloc can move a large one without copying it.
    [[gnu::noinline]] void grow(std::size_t more)
    {
        const std::size_t wanted = std::max({capacity_ * 2, size_ + more, std::size_t{65536}});
        char* moved = static_cast<char*>(std::realloc(data_, wanted));
        if (!moved)
            throw std::bad_alloc();
        data_ = moved;
        capacity_ = wanted;
    }

    char* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
    std::size_t count_ = 0;
};

struct ExportContext {
    const ProjectRecord& project;
    const ConfigRecord& config;
    GeoFrame geo;
    ExportBuffer& lines;
    // Folder source of the exclude files: the chosen .bgl path in a compiler run, else empty.
    std::string excludePrefix;
    // The session's generator: forests draw from it, and it is never reset between exports.
    RandomSource* random = nullptr;

    void add(std::string_view text) { lines.addLine(text); }
    // One line from its pieces, appended in place without temporaries: the rows of the big shapes.
    template <class... Parts>
    void addJoined(const Parts&... parts)
    {
        lines.addPieces(parts...);
    }
    // Without a generator the middle of the range: nothing is shaken.
    double nextRandom() { return random ? random->Next() : 0.5; }
    LatLon latLon(double x, double y, double divisor) const { return PointToLatLon(geo, x, y, divisor); }
};

} // namespace fw
