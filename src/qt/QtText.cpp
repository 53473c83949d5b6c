#include "qt/QtText.h"

#include <QFile>

namespace fw::qt {

namespace {

// 0x80..0x9F of Windows-1252; the five unassigned bytes map to the C1 controls of the same value.
constexpr char16_t kHigh[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// True when the bytes hold at least one multi-byte sequence and are valid UTF-8 throughout.
bool LooksLikeUtf8(const std::string& text)
{
    bool multiByte = false;
    std::size_t i = 0;
    while (i < text.size()) {
        auto c = static_cast<unsigned char>(text[i]);
        int follow = 0;
        if (c < 0x80)
            follow = 0;
        else if (c >= 0xC2 && c <= 0xDF)
            follow = 1;
        else if (c >= 0xE0 && c <= 0xEF)
            follow = 2;
        else if (c >= 0xF0 && c <= 0xF4)
            follow = 3;
        else
            return false;
        if (i + static_cast<std::size_t>(follow) >= text.size())
            return false;
        for (int k = 1; k <= follow; ++k) {
            auto d = static_cast<unsigned char>(text[i + static_cast<std::size_t>(k)]);
            if ((d & 0xC0) != 0x80)
                return false;
        }
        if (follow > 0)
            multiByte = true;
        i += static_cast<std::size_t>(follow) + 1;
    }
    return multiByte;
}

} // namespace

QString ToQt(const std::string& text)
{
    if (LooksLikeUtf8(text))
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    QString out;
    out.reserve(static_cast<qsizetype>(text.size()));
    for (char ch : text) {
        auto c = static_cast<unsigned char>(ch);
        if (c >= 0x80 && c <= 0x9F)
            out.append(QChar(kHigh[c - 0x80]));
        else
            out.append(QChar(static_cast<char16_t>(c)));
    }
    return out;
}

std::string FromQt(const QString& text)
{
    std::string out;
    out.reserve(static_cast<std::size_t>(text.size()));
    for (QChar qc : text) {
        char16_t u = qc.unicode();
        if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
            out.push_back(static_cast<char>(u));
            continue;
        }
        char mapped = '?';
        for (int k = 0; k < 32; ++k) {
            if (kHigh[k] == u) {
                mapped = static_cast<char>(0x80 + k);
                break;
            }
        }
        out.push_back(mapped);
    }
    return out;
}

std::string PathFromQt(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

QString PathToQt(const std::string& path)
{
    return ToQt(path);
}

} // namespace fw::qt
