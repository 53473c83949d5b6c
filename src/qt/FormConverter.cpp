#include "qt/FormConverter.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>

#include "dialogs/SettingsForms.h"
#include "qt/FormBase.h"
#include "qt/QtText.h"

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

// A result field wide enough for the longest text it shows, and showing a text from its start.
QLineEdit* ResultField(const QString& name)
{
    auto* out = new QLineEdit;
    out->setObjectName(name);
    out->setReadOnly(true);
    int widest = 0;
    for (const char* text : {"Unable to convert value!", "Value of wrong format!", "Input invalid!",
                             "-179 59' 59.999\"", "-0.000000000000001E-300"})
        widest = std::max(widest, out->fontMetrics().horizontalAdvance(QString::fromLatin1(text)));
    // The frame and the text margins of the line edit around the text.
    out->setMinimumWidth(widest + 2 * out->style()->pixelMetric(QStyle::PM_DefaultFrameWidth) + 12);
    return out;
}

void ShowResult(QLineEdit* field, const QString& text)
{
    field->setText(text);
    field->setCursorPosition(0);
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
    QLineEdit* out = ResultField("Text4");
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
        ShowResult(out, ToQt(ConvertDistance(FromQt(in->text()), inUnit->currentIndex(), outUnit->currentIndex(), sep)));
    });
    tabs->addTab(dist, "Distance");

    auto* lat = new QWidget;
    lat->setObjectName("lat");
    auto* l = new QGridLayout(lat);
    auto* angle = new QLineEdit;
    angle->setObjectName("Text1");
    QLineEdit* result = ResultField("Text2");
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
        ShowResult(result, ToQt(ConvertAngle(FromQt(angle->text()), format->currentIndex(), sep)));
    });
    tabs->addTab(lat, "Lat/Lon");

    auto* layout = new QVBoxLayout(w);
    layout->addWidget(tabs);
    w->hide();
    return w;
}

QPoint ConverterPlace(const QRect& owner, const QSize& size, const QRect& screen)
{
    constexpr int kGap = 8;     // between the converter and its owner
    constexpr int kMargin = 16; // kept from the screen's edges
    const QRect room = screen.adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const auto slide = [](int wanted, int lo, int length, int roomLength) {
        return std::clamp(wanted, lo, std::max(lo, lo + roomLength - length));
    };
    const auto fits = [&](const QPoint& p) { return room.contains(QRect(p, size)); };
    // Right of the owner, left of it, below it, above it: the first side with room.
    const int y = slide(owner.top(), room.top(), size.height(), room.height());
    const int x = slide(owner.left(), room.left(), size.width(), room.width());
    const QPoint sides[4] = {
        {owner.right() + 1 + kGap, y},
        {owner.left() - kGap - size.width(), y},
        {x, owner.bottom() + 1 + kGap},
        {x, owner.top() - kGap - size.height()},
    };
    for (const QPoint& p : sides)
        if (fits(p))
            return p;
    // No side has room: over the owner's top right corner, inside the screen's margin.
    return {slide(owner.right() - kGap - size.width(), room.left(), size.width(), room.width()),
            slide(owner.top() + 6 * kGap, room.top(), size.height(), room.height())};
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
    // It appears beside the window that asked for it; while it stands it stays where the user
    // put it.
    if (!w->isVisible() && parent != nullptr) {
        // Its own size the first time; after that the size the user gave it.
        if (!w->testAttribute(Qt::WA_Resized))
            w->adjustSize();
        const QWidget* owner = parent->window();
        const QScreen* screen = owner->screen();
        const QRect room = screen != nullptr ? screen->availableGeometry() : owner->frameGeometry();
        const QMargins frame = FrameAllowance(*w);
        const QSize outer = w->size().grownBy(frame);
        w->move(ConverterPlace(owner->frameGeometry(), outer, room));
    }
    w->show();
    w->raise();
    w->activateWindow();
}

} // namespace fw::qt
