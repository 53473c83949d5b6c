// The Ui port on Qt: message boxes, file and folder dialogs, tips, pointers.
#pragma once

#include <functional>

#include <QMenu>
#include <QPointer>
#include <QString>
#include <QWidget>

#include "core/Session.h"
#include "ports/Ui.h"

namespace fw::qt {

// "Desc (*.ext)|*.ext|All files (*.*)|*.*" as a Qt name filter list ("Desc (*.ext);;All files (*)").
QString QtFileFilter(const std::string& filter);

class QtUi : public Ui {
public:
    explicit QtUi(QWidget* parent = nullptr) : parent_(parent) {}
    ~QtUi() override;

    // The window dialogs belong to, and the widget whose pointer SetPointer changes.
    void setParent(QWidget* parent) { parent_ = parent; }
    void setCanvas(QWidget* canvas) { canvas_ = canvas; }
    // The session whose records and folders the dialogs read.
    void setSession(Session* session) { session_ = session; }
    // Where PopupMenu finds a menu by its name.
    void setMenuLookup(std::function<QMenu*(const QString&)> lookup) { menuLookup_ = std::move(lookup); }
    // Who rebuilds the OpenGL list; nobody until the OpenGL view has started.
    void setGlRebuild(std::function<void(bool)> rebuild) { glRebuild_ = std::move(rebuild); }

    void Message(const std::string& text, MessageStyle style, const std::string& title = {}) override;
    Answer AskYesNoCancel(const std::string& text, const std::string& title = {}) override;
    Answer AskYesNo(const std::string& text, const std::string& title = {}) override;
    bool ChooseFile(const FileDialogRequest& request, std::string& path) override;
    bool ChooseFolder(const std::string& title, const std::string& start, std::string& folder) override;
    int ShowTip(const std::string& text, int flag) override;
    void SetWaitCursor(bool on) override;
    void SetPointer(Pointer pointer) override;
    bool OpenExternal(const std::string& pathOrUrl) override;
    void ShowScasmStatus(const std::string& text, const std::string& logPath) override;
    void Repaint() override;
    void RebuildGLList(bool full) override
    {
        if (glRebuild_)
            glRebuild_(full);
    }
    bool ProjectSettings(ProjectRecord& project, bool newProject) override;
    // Pops up "MnuClick2", "MnuClick3" or "MnuSelection" at the pointer and waits for the choice.
    void PopupMenu(const std::string& name) override;

    // The shape and object dialogs (FormDispatch.cpp).
    bool ShapeProperties(ShapeRecord& shape, const PointList* points) override;
    bool NewShapeProperties(ShapeRecord& shape, const PointList* points) override;
    bool ObjectProperties(ObjectRecord& object) override;

    // The editor's small forms (FormSelection.cpp, FormRotate.cpp, FormConvertShape.cpp).
    int FormSelection(const std::vector<std::string>& names) override;
    bool RunTextForm(TextForm& form) override;
    int FormConvertShape(std::vector<ShapeRecord>& copies) override;

private:
    QPointer<QWidget> parent_;
    QPointer<QWidget> canvas_;
    Session* session_ = nullptr;
    std::function<void(bool)> glRebuild_;
    std::function<QMenu*(const QString&)> menuLookup_;
    bool waitCursor_ = false;
};

} // namespace fw::qt
