// Scripts answers to the modal windows a test opens.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include <QApplication>
#include <QTimer>
#include <QWidget>

namespace fw::qt {

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

} // namespace fw::qt
