#include "qt/Wiring.h"

#include <QTimer>

#include <QApplication>

#include "editor/Commands.h"
#include "editor/EditorCommon.h"
#include "editor/Undo.h"
#include "export/Compile.h"
#include "files/Recovery.h"
#include "qt/FormConverter.h"
#include "qt/FormOptions.h"
#include "qt/MainWindow.h"
#include "qt/ProblemsPanel.h"
#include "render/BackImage.h"
#include "render/Bitmap.h"

namespace fw::qt {

namespace {

// A shape is being drawn: New waits for it to end.
bool Drawing(const Session& s)
{
    const int state = s.editor.EditState;
    return (state >= 1 && state <= 6) || state == 19;
}

} // namespace

FlowHooks WindowFlowHooks(MainWindow& window, Session& session)
{
    (void)session;
    FlowHooks h;
    h.loadBackImage = [](Session& s, const std::string& path) { return CBitmap(s.bitmap).GetPicture(path, s.ui); };
    h.undoPrepare = [](Session& s) { UndoPrepare(s); };
    h.markChanged = [](Session& s) { MarkChanged(s, true); };
    h.titleChanged = [&window](Session&) { window.UpdateTitle(); };
    h.resetTool = [&window](Session& s) {
        s.view.setMMode(0);
        window.SelectEditButton();
        window.Tick();
    };
    h.redraw = [](Session& s) {
        RebuildGL(s);
        PaintFrame(s);
    };
    h.redrawOpened = [](Session& s) {
        RebuildGL(s, true);
        PaintFrame(s);
    };
    return h;
}

void WireFileCommands(MainWindow& window, Session& session, const std::string& configPath,
                      std::function<void()> endProgram)
{
    const FlowHooks hooks = WindowFlowHooks(window, session);
    window.connectCommand("MnuFnew", [&session, hooks] {
        if (!Drawing(session))
            MnuFnew(session, hooks);
    });
    window.connectCommand("MnuFopen", [&session, hooks] { MnuFopen(session, hooks); });
    for (int i = 0; i < 4; ++i)
        window.connectCommand(QString("MnuFrecent%1").arg(i + 1),
                              [&session, hooks, i] { MnuFrecent(session, i, hooks); });
    window.connectCommand("MnuFsave", [&session, hooks] { MnuFsave(session, hooks); });
    window.connectCommand("MnuFsaveas", [&session, hooks] { MnuFsaveas(session, hooks); });
    window.connectCommand("MnuFsaveselection", [&session] { MnuFsaveselection(session); });
    window.connectCommand("MnuFimportshape", [&session, hooks] { MnuFimportshape(session, hooks); });

    MainWindowHooks windowHooks;
    windowHooks.exit = [&session, hooks, configPath](int state, int width, int height) {
        return ExitFlow(session, state, width, height, configPath, hooks);
    };
    windowHooks.endProgram = std::move(endProgram);
    windowHooks.openGLFailed = [&session, configPath] { OpenGLStartFailed(session, configPath); };
    window.setHooks(std::move(windowHooks));
}

void WireSettingsCommands(MainWindow& window, Session& session)
{
    window.connectCommand("MnuFsettings", [&session] { MnuFsettings(session); });
    window.connectCommand("MnuFoptions", [&session, &window] {
        if (RunFormOptions(session.config, session.openGLActive, session.values(), session.programFolder, &window))
            PaintFrame(session);
    });
    window.connectCommand("MnuHconverter", [&session, &window] { ShowConverter(session.decimalSeparator, &window); });
}

void WireExportCommands(MainWindow& window, Session& session, Process& process)
{
    window.connectCommand("MnuFexport", [&session] { MnuFexport(session); });
    window.connectCommand("MnuFbgl", [&session, &process] {
        if (ConfirmCompile(session))
            MnuFbgl(session, process);
    });
}

void WireImageCommands(MainWindow& window, Session& session)
{
    window.connectCommand("MnuBloadremove", [&session] { MnuBloadremove(session); });
    window.connectCommand("MnuBremove", [&session] { MnuBremove(session); });
}

namespace {

// Notes input that reaches any of the program's windows: a change can only follow one.
class InputWatch : public QObject {
public:
    explicit InputWatch(QObject* parent) : QObject(parent) {}
    bool pending = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyRelease:
        case QEvent::Wheel:
            pending = true;
            break;
        default:
            break;
        }
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

void WireRecovery(MainWindow& window, Session& session)
{
    auto* watch = new InputWatch(&window);
    qApp->installEventFilter(watch);
    auto* timer = new QTimer(&window);
    timer->setInterval(1000);
    QObject::connect(timer, &QTimer::timeout, &window, [watch, &session] {
        // Not while a dialog waits: the change it is part of isn't finished.
        if (!watch->pending || QApplication::activeModalWidget() != nullptr)
            return;
        watch->pending = false;
        KeepRecovery(session);
    });
    timer->start();
    const FlowHooks hooks = WindowFlowHooks(window, session);
    QTimer::singleShot(0, &window, [&session, hooks] { OfferRecoveryAtStart(session, hooks); });
}

} // namespace fw::qt
