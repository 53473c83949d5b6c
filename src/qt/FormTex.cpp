#include "qt/FormTex.h"

#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/Helpers.h"
#include "dialogs/FormShape.h"
#include "qt/FormBase.h"
#include "qt/FormShape.h"
#include "qt/QtText.h"
#include "render/Texture.h"

namespace fw::qt {

bool RunFormTex(const QString& title, const std::string& folder, const std::string& programFolder,
                const std::string& current, bool allowNone, std::string& name, QWidget* parent)
{
    const std::vector<std::string> names = FillTexList(folder);
    if (names.empty()) {
        QMessageBox::information(parent, "Fieldwright", "There are no textures in " + ToQt(folder) + "!");
        return false;
    }
    QDialog d(parent);
    d.setObjectName("FormTex");
    d.setWindowTitle(title);
    auto* list = new QListWidget(&d);
    for (const std::string& n : names)
        list->addItem(ToQt(n));
    auto* picture = new QLabel(&d);
    picture->setFixedSize(128, 128);
    auto* label = new QLabel(&d);
    // A fixed column, so that the list keeps its width whatever format label a texture has.
    label->setWordWrap(true);
    label->setFixedWidth(160);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    const auto show = [&](int row) {
        if (row < 0 || row >= static_cast<int>(names.size()))
            return;
        if (!FileExists(AddBackslash(folder) + names[row])) {
            label->setText("(Texture not found)");
            picture->clear();
            return;
        }
        std::string l;
        const QImage img = TexturePicture(AddBackslash(folder) + names[row], programFolder, 128, 128, l);
        picture->setPixmap(QPixmap::fromImage(img));
        label->setText(ToQt(l));
    };
    const auto selectedRow = [list] { return SelectedRow(list); };
    QObject::connect(list, &QListWidget::itemSelectionChanged, &d, [&, selectedRow] { show(selectedRow()); });
    const int at = FindTextureInList(names, current);
    if (at >= 0)
        list->setCurrentRow(at);

    auto* ok = new QPushButton("OK", &d);
    auto* cancel = new QPushButton("&Cancel", &d);
    auto* noTexture = new QPushButton("&No texture", &d);
    noTexture->setVisible(allowNone);
    ok->setEnabled(selectedRow() >= 0);
    QObject::connect(list, &QListWidget::itemSelectionChanged, ok,
                     [ok, selectedRow] { ok->setEnabled(selectedRow() >= 0); });
    std::string chosen;
    bool picked = false;
    QObject::connect(ok, &QPushButton::clicked, &d, [&] {
        const int row = selectedRow();
        if (row < 0)
            return;
        chosen = names[row];
        picked = true;
        d.accept();
    });
    QObject::connect(noTexture, &QPushButton::clicked, &d, [&] {
        chosen.clear();
        picked = true;
        d.accept();
    });
    QObject::connect(cancel, &QPushButton::clicked, &d, &QDialog::reject);

    auto* grid = new QGridLayout(&d);
    grid->addWidget(new QLabel("Contents of \\TEXTURE:\n" + ToQt(TextureFolderLabel(folder))), 0, 0, 1, 2);
    grid->addWidget(list, 1, 0, 3, 1);
    grid->addWidget(picture, 1, 1);
    grid->addWidget(label, 2, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(noTexture);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    grid->addLayout(buttons, 4, 0, 1, 2);
    FitTitle(&d);
    d.exec();
    if (!picked)
        return false;
    name = chosen;
    return true;
}

bool AverageTextureColor(const std::string& path, const std::string& programFolder, std::int32_t& color)
{
    std::vector<std::uint32_t> pixels;
    BitmapInfoHeader header;
    std::string label;
    ReadTextureGdi(path, programFolder, pixels, header, label);
    if (label == kLabelUnknown || pixels.empty())
        return false;
    std::uint64_t r = 0, g = 0, b = 0;
    for (std::uint32_t p : pixels) {
        r += (p >> 16) & 0xFF;
        g += (p >> 8) & 0xFF;
        b += p & 0xFF;
    }
    const std::uint64_t n = pixels.size();
    color = static_cast<std::int32_t>((r / n) | ((g / n) << 8) | ((b / n) << 16));
    return true;
}

namespace {

// Two rows of palette cells: 1..14, and 16..30 under their label.
class PaletteCells : public QWidget {
public:
    PaletteCells(const Palette& palette, int& index, QWidget* parent)
        : QWidget(parent), palette_(palette), index_(index)
    {
        setFixedSize(15 * 26 + 4, 80);
    }

protected:
    QRect Cell(int i) const
    {
        const CellRect c = PaletteCell(i);
        return QRect(c.x, c.y, c.w, c.h);
    }
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.drawText(2, 46, "Colors with short visible range:");
        for (int i = 1; i <= 30; ++i) {
            if (i == 15)
                continue;
            const auto& c = palette_[i];
            p.fillRect(Cell(i), QColor(c[0], c[1], c[2]));
        }
        const QRect cur = Cell(index_);
        p.setPen(Qt::black);
        p.drawRect(cur.adjusted(-2, -2, 1, 1));
        p.setPen(Qt::white);
        p.drawRect(cur.adjusted(-1, -1, 0, 0));
    }
    void mousePressEvent(QMouseEvent* e) override
    {
        const QPoint p = e->position().toPoint();
        const int i = PaletteCellAt(p.x(), p.y());
        if (i > 0) {
            index_ = i;
            update();
        }
    }

private:
    const Palette& palette_;
    int& index_;
};

} // namespace

bool RunFormColor(const std::string& programFolder, int& index, QWidget* parent)
{
    Palette palette{};
    LoadPalette(programFolder, palette);
    int current = index;
    QDialog d(parent);
    d.setObjectName("FormColor");
    d.setWindowTitle("Pick color");
    auto* cells = new PaletteCells(palette, current, &d);
    auto* ok = new QPushButton("OK", &d);
    auto* cancel = new QPushButton("Cancel", &d);
    QObject::connect(ok, &QPushButton::clicked, &d, &QDialog::accept);
    QObject::connect(cancel, &QPushButton::clicked, &d, &QDialog::reject);
    auto* layout = new QVBoxLayout(&d);
    layout->addWidget(cells);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(ok);
    row->addWidget(cancel);
    layout->addLayout(row);
    FitTitle(&d);
    if (d.exec() != QDialog::Accepted)
        return false;
    index = current;
    return true;
}

} // namespace fw::qt
