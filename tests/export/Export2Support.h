// Golden texts of the tree, runway, navigation, object and sign exports: tests/fixtures/export2/.
#pragma once

#include "ExportTestSupport.h"

namespace fw::test {

// Compares with tests/fixtures/export2/<name>.txt byte for byte, after the structure check.
// FW_WRITE_GOLDEN=1 writes the file instead, to be read line by line before it is committed.
inline void ExpectGolden2(const std::string& name, const std::string& text)
{
    ExpectWellFormed(text);
    const std::string path = std::string(FW_FIXTURES) + "/export2/" + name + ".txt";
    if (const char* w = std::getenv("FW_WRITE_GOLDEN"); w && std::string(w) == "1") {
        std::ofstream(path, std::ios::binary) << text;
        return;
    }
    const std::string golden = ReadBytes(path);
    ASSERT_FALSE(golden.empty()) << "no golden file " << path;
    EXPECT_EQ(golden, text) << "golden " << name;
}

// The lines of an export, without their CR LF.
inline std::vector<std::string> SplitLines(const std::string& text)
{
    std::vector<std::string> out;
    std::size_t pos = 0;
    while (pos < text.size()) {
        const std::size_t end = text.find("\r\n", pos);
        out.push_back(text.substr(pos, end - pos));
        pos = end + 2;
    }
    return out;
}

inline std::size_t CountLines(const std::string& text, const std::string& part)
{
    std::size_t n = 0;
    for (const auto& l : SplitLines(text))
        if (l.find(part) != std::string::npos)
            ++n;
    return n;
}

} // namespace fw::test
