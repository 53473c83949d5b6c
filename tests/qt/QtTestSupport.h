// Shared by the Qt tests: a session with scripted answers, and the modal windows a test opens
// answered and filled as a user would.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include "core/Config.h"
#include "core/Session.h"
#include "support/ScriptedUi.h"
#include "qt/QtUi.h"

namespace fw::qt {

// A fresh session whose questions the script answers, the Qt Ui for the windows, a temporary folder.
struct QtSessionTest : ::testing::Test {
    QtSessionTest()
    {
        ResetAtStart(session);
        ResetConfig(session.config, "/tmp/fw/");
        session.ui = &scripted;
    }
    std::string Temp(const char* name) const { return dir.filePath(name).toStdString(); }

    Session session;
    ScriptedUi scripted;
    QtUi ui;
    QTemporaryDir dir;
};

using Step = std::function<void(QWidget*)>;

// Runs the steps one after the other, each on the modal window open at that moment. The next
// step is armed before a step runs, so that it can answer a window the step opens and waits on.
inline void Script(std::vector<Step> steps)
{
    auto shared = std::make_shared<std::vector<Step>>(std::move(steps));
    auto next = std::make_shared<std::function<void(std::size_t)>>();
    *next = [shared, next](std::size_t i) {
        if (i >= shared->size())
            return;
        QTimer::singleShot(0, [shared, next, i] {
            QWidget* w = QApplication::activeModalWidget();
            if (!w) {
                (*next)(i); // not open yet: try again
                return;
            }
            (*next)(i + 1);
            (*shared)[i](w);
        });
    };
    (*next)(0);
}

// Runs action on the modal window of type T once it is up.
template <typename T, typename F>
void OnModal(F action)
{
    Script({[action](QWidget* w) {
        if (auto* t = qobject_cast<T*>(w))
            return action(t);
        ADD_FAILURE() << "another window: " << w->objectName().toStdString();
        w->close();
    }});
}

inline QLineEdit* Text(QWidget* form, const char* name)
{
    auto* e = form->findChild<QLineEdit*>(name);
    EXPECT_NE(e, nullptr) << name;
    return e;
}

inline void Type(QWidget* form, const char* name, const QString& text)
{
    if (QLineEdit* e = Text(form, name))
        e->setText(text);
}

// Typed key by key, so the field's own key handling sees each one.
inline void Keys(QWidget* field, const std::string& keys)
{
    for (char c : keys) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(QChar(c)));
        QApplication::sendEvent(field, &press);
    }
}

inline void Press(QWidget* form, const char* name)
{
    auto* b = form->findChild<QPushButton*>(name);
    ASSERT_NE(b, nullptr) << name;
    b->click();
}

inline bool HasLabel(QWidget* form, const QString& text)
{
    for (QLabel* l : form->findChildren<QLabel*>())
        if (l->text() == text)
            return true;
    return false;
}

} // namespace fw::qt
