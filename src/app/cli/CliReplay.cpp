#include <cstdio>
#include <filesystem>
#include <iostream>

#include "app/cli/Commands.h"
#include "files/Recovery.h"
#include "ports/Host.h"
#include "dialogs/FormAnswers.h"
#include "replay/Replay.h"
#include "export/Compile.h"
#include "posix/PosixProcess.h"
#include "render/BackImage.h"

namespace fw::cli {

int Replay(const Args& args)
{
    std::string script, out;
    bool bad = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--out") {
            if (i + 1 >= args.size() || !out.empty() || args[i + 1].empty())
                bad = true;
            else
                out = args[++i];
        } else if (script.empty()) {
            script = args[i];
        } else {
            bad = true;
        }
    }
    if (bad || script.empty()) {
        std::fputs("usage: fieldwright-cli replay SCRIPT [--out FOLDER]\n", stderr);
        return 2;
    }
    if (!out.empty() && !std::filesystem::is_directory(out)) {
        std::fprintf(stderr, "the output folder '%s' doesn't exist\n", out.c_str());
        return 2;
    }
    std::string base = std::filesystem::path(script).parent_path().string();
    if (base.empty())
        base = ".";
    ReplaySession replay(ProgramFolder(), base, out);
    // The same keeper as the desktop program: a copy after each line that changed the project.
    StartRecovery(replay.session, RecoveryFolderFromEnvironment());
    // "answer form ..." lines fill in the dialogs and run their checks.
    Session& session = replay.session;
    ReplayUi& ui = replay.ui;
    FormButtons buttons;
    buttons.optimize = [&ui](ProjectRecord& working) { return ui.OptimizeSettings(working); };
    buttons.converter = [&ui] { ui.Converter(); };
    ui.formAnswers = [&session, buttons](const std::vector<std::string>& words, const ReplayUi::FormTarget& t,
                                         std::string& why) {
        const ValueContext ctx = session.values();
        FormAnswerResult r = FormAnswerResult::Refused;
        if (t.shape)
            r = AnswerShapeForm(words, *t.shape, t.points, t.mustComplete, ctx, why, buttons);
        else if (t.object)
            r = AnswerObjectForm(words, *t.object, session.config, session.programFolder, ctx, why);
        else if (t.project)
            r = AnswerProjectForm(words, *t.project, t.mustComplete, ctx, why, buttons);
        else if (t.optimize)
            r = AnswerOptimizeForm(words, *t.optimize, ctx, why);
        else if (t.config)
            r = AnswerOptionsForm(words, *t.config, t.openGLActive, ctx, why);
        else if (t.converter)
            r = AnswerConverterForm(words, *t.converter, ctx, why);
        return static_cast<int>(r);
    };
    // The menu commands whose work is in the export and the background image.
    replay.moreCommands = [](Session& s, const std::string& name) {
        if (name == "MnuFexport") {
            MnuFexport(s);
        } else if (name == "MnuFbgl") {
            PosixProcess process;
            MnuFbgl(s, process, CompilerFromEnvironment());
        } else if (name == "MnuBloadremove") {
            MnuBloadremove(s);
        } else if (name == "MnuBremove") {
            MnuBremove(s);
        } else {
            return false;
        }
        return true;
    };
    return replay.RunFile(script, std::cerr);
}

} // namespace fw::cli
