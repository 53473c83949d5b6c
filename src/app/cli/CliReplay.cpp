#include <cstdio>
#include <filesystem>
#include <iostream>

#include "app/cli/Commands.h"
#include "dialogs/FormAnswers.h"
#include "editor/Replay.h"

namespace fw::cli {

int Replay(const Args& args)
{
    if (args.size() != 1) {
        std::fputs("usage: fieldwright-cli replay SCRIPT\n", stderr);
        return 2;
    }
    const std::filesystem::path script(args[0]);
    std::string base = script.parent_path().string();
    if (base.empty())
        base = ".";
    ReplaySession replay(ProgramFolder(), base);
    // "answer form ..." lines fill in the property dialogs and run their checks.
    Session& session = replay.session;
    replay.ui.formAnswers = [&session](const std::vector<std::string>& words, const ReplayUi::FormTarget& t,
                                       std::string& why) {
        FormAnswerResult r = FormAnswerResult::Refused;
        if (t.shape)
            r = AnswerShapeForm(words, *t.shape, t.points, t.mustComplete, session.values(), why);
        else if (t.object)
            r = AnswerObjectForm(words, *t.object, session.config, session.programFolder, session.values(), why);
        else if (t.project)
            r = AnswerProjectForm(words, *t.project, t.mustComplete, session.values(), why);
        return static_cast<int>(r);
    };
    return replay.RunFile(args[0], std::cerr);
}

} // namespace fw::cli
