// Feeds any bytes to the replay harness as a script, line by line as `fieldwright-cli replay` runs
// one, with the property dialogs answered by their forms. Every file a line names stays inside this
// process's temporary folder, which is emptied before each input: a name is cut to its last part
// (after "/" or "\"), to the letters, digits, ".", "_" and "-" in it, and put in that folder. A
// name of one of a few test projects opens that project. Like the command, the script stops at the
// first line that can't run. "command MnuFbgl", which would start the compiler, is passed over.
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "dialogs/FormAnswers.h"
#include "replay/Replay.h"

#ifndef FW_FIXTURES
#define FW_FIXTURES ""
#endif

namespace {

const fw::fuzz::TempFolder& Folder()
{
    static const fw::fuzz::TempFolder folder("fw_fuzz_replay");
    return folder;
}

// Projects a script can open by their names, read once from the source tree's fixtures.
const std::map<std::string, std::string>& Projects()
{
    static const std::map<std::string, std::string> projects = [] {
        std::map<std::string, std::string> out;
        for (const char* name : {"files/all_types.fwt", "render/airfield.fwt", "export2/every_kind.fwt",
                                 "files/object_edges.fwt", "files/shape_edges.fwt"}) {
            std::ifstream in(std::string(FW_FIXTURES) + "/" + name, std::ios::binary);
            std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
            const std::string file(name);
            if (!text.empty())
                out[file.substr(file.rfind('/') + 1)] = text;
        }
        return out;
    }();
    return projects;
}

// A name kept inside the folder; a known project's name brings its text there first.
std::string Inside(const std::string& word)
{
    std::string name = word.substr(word.find_last_of("/\\") == std::string::npos ? 0 : word.find_last_of("/\\") + 1);
    std::string kept;
    for (char c : name)
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '_' ||
            c == '-')
            kept += c;
    kept.erase(0, kept.find_first_not_of('.'));
    if (kept.empty())
        kept = "file";
    kept.resize(std::min<std::size_t>(kept.size(), 64));
    const std::string path = Folder() / kept;
    const auto& projects = Projects();
    if (auto it = projects.find(kept); it != projects.end()) {
        std::ifstream exists(path);
        if (!exists)
            std::ofstream(path, std::ios::binary) << it->second;
    }
    return path;
}

// The line with every word that names a file (or could, in a dialog's field) kept inside the folder.
std::string Confined(const std::string& raw)
{
    std::string line = raw;
    if (const auto hash = line.find('#'); hash != std::string::npos)
        line.erase(hash);
    std::vector<std::string> words;
    std::istringstream in(line);
    for (std::string w; in >> w;)
        words.push_back(w);
    // Compiling starts the compiler, a program outside this one: the line does nothing here.
    if (words.empty() || (words[0] == "command" && words.size() == 2 && words[1] == "MnuFbgl"))
        return {};
    const bool namesFile = ((words[0] == "open" || words[0] == "save" || words[0] == "state") && words.size() == 2) ||
                           (words[0] == "answer" && words.size() == 3 && words[1] == "file");
    std::string out;
    for (std::size_t i = 0; i < words.size(); ++i) {
        std::string w = words[i];
        if (namesFile && i + 1 == words.size()) {
            w = Inside(w);
        } else if (w.find_first_of("/\\") != std::string::npos) {
            // A path in a dialog's field: FIELD=PATH keeps its field.
            const std::size_t eq = w.find('=');
            w = eq == std::string::npos ? Inside(w) : w.substr(0, eq + 1) + Inside(w.substr(eq + 1));
        }
        out += (i ? " " : "") + w;
    }
    return out;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto& folder = Folder();
    folder.Clear();
    // The program folder inside this one, not there until something writes into it.
    fw::ReplaySession replay(folder / "program/", folder.path());
    fw::Session& session = replay.session;
    replay.ui.formAnswers = [&session](const std::vector<std::string>& words, const fw::ReplayUi::FormTarget& t,
                                       std::string& why) {
        fw::FormAnswerResult r = fw::FormAnswerResult::Refused;
        if (t.shape)
            r = fw::AnswerShapeForm(words, *t.shape, t.points, t.mustComplete, session.values(), why);
        else if (t.object)
            r = fw::AnswerObjectForm(words, *t.object, session.config, session.programFolder, session.values(), why);
        else if (t.project)
            r = fw::AnswerProjectForm(words, *t.project, t.mustComplete, session.values(), why);
        return static_cast<int>(r);
    };

    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t end = text.find('\n', at);
        if (end == std::string_view::npos)
            end = text.size();
        std::string line(text.substr(at, end - at));
        at = end + 1;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        std::string error;
        if (!replay.Run(Confined(line), error))
            break;
    }
    (void)replay.StateJson();
    return 0;
}
