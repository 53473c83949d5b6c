#include "platform/qt/FormConverter.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

#include "dialogs/SettingsForms.h"
#include "platform/qt/QtText.h"

namespace fw::qt {

namespace {

// The one converter window, loaded hidden at start or by the first dialog that asks for it.
QWidget* FindConverter()
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == "FormConverter")
            return w;
    return nullptr;
}

QComboBox* List(const std::vector<std::string>& items, const QString& name)
{
    auto* c = new QComboBox;
    c->setObjectName(name);
    for (const std::string& i : items)
        c->addItem(ToQt(i));
    c->setCurrentIndex(0);
    return c;
}

} // namespace

QWidget* LoadConverter(char sep, QWidget* parent)
{
    if (QWidget* loaded = FindConverter())
        return loaded;
    auto* w = new QWidget(parent, Qt::Tool);
    w->setObjectName("FormConverter");
    w->setWindowTitle("Converter");
    auto* tabs = new QTabWidget(w);

    auto* dist = new QWidget;
    dist->setObjectName("dist");
    auto* d = new QGridLayout(dist);
    auto* in = new QLineEdit;
    in->setObjectName("Text3");
    auto* out = new QLineEdit;
    out->setObjectName("Text4");
    out->setReadOnly(true);
    QComboBox* inUnit = List(DistanceUnits(), "InputUnit");
    QComboBox* outUnit = List(DistanceUnits(), "OutputUnit");
    auto* go = new QPushButton("Convert >>");
    d->addWidget(new QLabel("Input unit system:"), 0, 0);
    d->addWidget(inUnit, 1, 0);
    d->addWidget(in, 2, 0);
    d->addWidget(go, 2, 1);
    d->addWidget(new QLabel("Output unit system:"), 0, 2);
    d->addWidget(outUnit, 1, 2);
    d->addWidget(out, 2, 2);
    d->setRowStretch(3, 1);
    QObject::connect(go, &QPushButton::clicked, w, [=] {
        out->setText(ToQt(ConvertDistance(FromQt(in->text()), inUnit->currentIndex(), outUnit->currentIndex(), sep)));
    });
    tabs->addTab(dist, "Distance");

    auto* lat = new QWidget;
    lat->setObjectName("lat");
    auto* l = new QGridLayout(lat);
    auto* angle = new QLineEdit;
    angle->setObjectName("Text1");
    auto* result = new QLineEdit;
    result->setObjectName("Text2");
    result->setReadOnly(true);
    QComboBox* format = List(AngleFormats(), "OutputFormat");
    auto* go2 = new QPushButton("Convert >>");
    l->addWidget(new QLabel("Output format:"), 0, 2);
    l->addWidget(angle, 1, 0);
    l->addWidget(go2, 1, 1);
    l->addWidget(format, 1, 2);
    l->addWidget(result, 2, 2);
    auto* note = new QLabel(QString::fromUtf8("Following characters are allowed:\nN, S, E, W, \u00B0, ' and \" "
                                              "- e.g. N40\u00B0 30' 15.5\""));
    l->addWidget(note, 2, 0, 1, 2);
    l->setRowStretch(3, 1);
    QObject::connect(go2, &QPushButton::clicked, w, [=] {
        result->setText(ToQt(ConvertAngle(FromQt(angle->text()), format->currentIndex(), sep)));
    });
    tabs->addTab(lat, "Lat/Lon");

    auto* layout = new QVBoxLayout(w);
    layout->addWidget(tabs);
    w->hide();
    return w;
}

void ShowConverter(char sep, QWidget* parent)
{
    QWidget* w = LoadConverter(sep, parent);
    // Opened from a dialog, the window has to take input while that dialog waits for its answer:
    // it becomes a transient of the dialog, which keeps the dialog from blocking it.
    if (QWidget* modal = QApplication::activeModalWidget(); modal && modal->window() != w) {
        w->hide();
        w->winId();
        if (QWindow* handle = w->windowHandle())
            handle->setTransientParent(modal->window()->windowHandle());
    }
    // Shown the first time beside the window that asked, then where the user leaves it.
    if (!w->testAttribute(Qt::WA_Moved) && parent != nullptr) {
        w->adjustSize();
        const QRect owner = parent->window()->frameGeometry();
        const QScreen* screen = parent->window()->screen();
        const QRect room = screen != nullptr ? screen->availableGeometry() : owner;
        int x = owner.right() + 8;
        if (x + w->width() > room.right())
            x = owner.left() - 8 - w->width();
        w->move(std::clamp(x, room.left(), std::max(room.left(), room.right() - w->width())),
                std::clamp(owner.top(), room.top(), std::max(room.top(), room.bottom() - w->height())));
    }
    w->show();
    w->raise();
    w->activateWindow();
}

} // namespace fw::qt
