#include "qt/FormShape.h"

#include <QColorDialog>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QVBoxLayout>

#include "core/PathCase.h"
#include "dialogs/FormShape.h"
#include "qt/FormBase.h"
#include "qt/FormConverter.h"
#include "qt/FormTex.h"
#include "qt/QtCanvas.h"
#include "qt/QtText.h"
#include "render/Texture.h"

namespace fw::qt {

QImage TexturePicture(const std::string& path, const std::string& programFolder, int width, int height,
                      std::string& label)
{
    QtCanvas canvas(width, height);
    TextureSize size;
    LoadPreview(canvas, width, height, label, size, path, programFolder);
    label += " (" + std::to_string(size.width) + " x " + std::to_string(size.height) + ")";
    return canvas.Image().copy();
}

namespace {

QColor ToColor(std::int32_t bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

// The colour box shows the colour behind a caption readable on it; when the shape is textured the
// caption greys so that the box reads as disabled.
QString ColorBoxStyle(const QColor& q)
{
    const bool dark = q.red() * 299 + q.green() * 587 + q.blue() * 114 < 128000;
    return QString("QPushButton { background-color: %1; color: %2 } QPushButton:disabled { color: #808080 }")
        .arg(q.name(), dark ? "white" : "black");
}

// The TexPoly map: the texture at 256 by 256 with the numbered corners, dragged by the mouse.
class MapPicture : public QWidget {
public:
    MapPicture(FormShape& model, QWidget* parent) : QWidget(parent), model_(model)
    {
        setFixedSize(257, 257);
        setMouseTracking(true);
    }
    QImage texture;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(rect(), Qt::white);
        if (!texture.isNull())
            p.drawImage(0, 0, texture);
        const QColor outline = ToColor(WheelColor(model_.values.Int("SliderColor")));
        p.setPen(outline);
        const int n = model_.CornerCount();
        for (int i = 0; i < n; ++i) {
            const Point a = model_.corners[i];
            const Point b = model_.corners[(i + 1) % n];
            p.drawLine(a.X, a.Y, b.X, b.Y);
        }
        const QFontMetrics fm = p.fontMetrics();
        for (int i = 0; i < n; ++i) {
            const Point c = model_.corners[i];
            p.drawRect(c.X - 2, c.Y - 2, 5, 5);
            // The number goes above and right of its corner, or flips to the other side at an edge
            // of the picture, where the default mapping puts corners, so that every number shows.
            const QString number = QString::number(i + 1);
            int x = c.X + 5;
            int y = c.Y - 4;
            if (x + fm.horizontalAdvance(number) > width())
                x = c.X - 4 - fm.horizontalAdvance(number);
            if (y - fm.ascent() < 0)
                y = c.Y + 5 + fm.ascent();
            p.drawText(x, y, number);
        }
    }
    void mousePressEvent(QMouseEvent* e) override
    {
        picked_ = model_.mTPselect(e->position().x(), e->position().y());
        if (picked_ >= 0) {
            setCursor(Qt::BlankCursor);
            update();
        }
    }
    void mouseMoveEvent(QMouseEvent* e) override
    {
        const int x = static_cast<int>(e->position().x());
        const int y = static_cast<int>(e->position().y());
        if (picked_ >= 0) {
            model_.DragCorner(picked_, x, y);
            update();
        } else {
            setCursor(model_.mTPselect(x, y) >= 0 ? Qt::CrossCursor : Qt::ArrowCursor);
        }
    }
    void mouseReleaseEvent(QMouseEvent*) override
    {
        if (picked_ >= 0) {
            picked_ = -1;
            setCursor(Qt::ArrowCursor);
            update();
        }
    }

private:
    FormShape& model_;
    int picked_ = -1;
};

// The tree-line band picker: the texture's bands with a red frame around the chosen one.
class BandPicture : public QWidget {
public:
    BandPicture(FormShape& model, QWidget* parent) : QWidget(parent), model_(model)
    {
        setFixedSize(256, 240);
        setFocusPolicy(Qt::StrongFocus);
    }
    QImage texture;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        const int n = model_.NumBands();
        const int h = BandPictureHeight(n);
        p.fillRect(rect(), palette().window());
        // The texture at its full 256 rows, cut at the picture's height, so the bands sit at the rows
        // the export takes them from.
        if (!texture.isNull())
            p.drawImage(QPoint(0, 0), texture, QRect(0, 0, 256, h));
        p.setPen(palette().button().color());
        for (int i = 1; i <= n; ++i)
            p.drawLine(0, i * BandStep(n) - 1, 255, i * BandStep(n) - 1);
        p.setPen(Qt::red);
        for (const auto& f : BandFrames(model_.corners[0].Y, n))
            p.drawRect(f[0], f[1], f[2] - f[0], f[3] - f[1]);
    }
    void mousePressEvent(QMouseEvent* e) override
    {
        const int band = model_.mTLselect(e->position().x(), e->position().y());
        if (band >= 0) {
            model_.corners[0].Y = band;
            update();
        }
    }
    void keyPressEvent(QKeyEvent* e) override
    {
        if (e->key() == Qt::Key_Up || e->key() == Qt::Key_Down) {
            model_.BandKey(e->key() == Qt::Key_Up ? -1 : 1);
            update();
            return;
        }
        QWidget::keyPressEvent(e);
    }

private:
    FormShape& model_;
};

// The general tab's outline of the shape itself.
class OutlinePicture : public QWidget {
public:
    OutlinePicture(int type, const PointList* points, QWidget* parent) : QWidget(parent), type_(type)
    {
        setFixedSize(120, 120);
        if (points)
            points_ = *points;
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter p(this);
        p.fillRect(rect(), Qt::white);
        p.setPen(Qt::black);
        const PointList out = PreviewOutline(points_, width(), height());
        QPolygon poly;
        for (const Point& q : out)
            poly << QPoint(q.X, q.Y);
        if (type_ == kPoly || type_ == kTexPoly || type_ == kForest) {
            p.setBrush(QColor(192, 192, 192));
            p.drawPolygon(poly);
        } else {
            p.drawPolyline(poly);
        }
    }

private:
    int type_;
    PointList points_;
};

} // namespace

bool RunFormShape(ShapeRecord& record, const ShapeFormContext& c, QWidget* parent)
{
    FormShape model;
    const int last = c.points ? static_cast<int>(c.points->size()) - 1 : 3;
    model.Show_(record, last, c.mustComplete, c.values.decimalSeparator);
    const ShapeFields f = FieldsOf(record.gType);
    FormBase form(FormShape::kName, ToQt(ShapeTitle(record.gType)), parent);
    const char sep = c.values.decimalSeparator;
    const std::string texFolder = c.config ? AddBackslash(c.config->TEXPath) : std::string();

    auto* tabs = new QTabWidget(&form);

    // general
    auto* general = new QWidget;
    general->setObjectName("general");
    auto* g = new QGridLayout(general);
    AddRow(g, "Comment:", form.Text("Comment", TextKey));
    // A field the type doesn't use takes no row, so that the rest stay beside the outline.
    const auto place = [&](QWidget* w, bool shown) {
        if (shown) {
            g->addWidget(w, g->rowCount(), 1);
        } else {
            w->setParent(general);
            w->hide();
        }
    };
    QCheckBox* colored = form.Check("Colored", "Colored");
    place(colored, f.colored);
    auto* colorBox = new QPushButton("Pick color", general);
    colorBox->setObjectName("ColorBox");
    place(colorBox, f.color);
    auto* transparency = new QWidget;
    auto* tRow = new QHBoxLayout(transparency);
    tRow->setContentsMargins(0, 0, 0, 0);
    tRow->addWidget(new QLabel("transparent"));
    tRow->addWidget(form.Slider("Transparency", 0, 15));
    tRow->addWidget(new QLabel("opaque"));
    place(transparency, f.transparency);
    place(form.Check("Lighted", "Constantly lighted at any time of day"), f.lighted);
    if (!f.valueLabel.empty())
        AddRow(g, ToQt(f.valueLabel), form.Text("Value", [sep](int k) { return DecimalKey(k, sep); }));
    QComboBox* effects = form.Combo("Effects", EffectsList());
    if (f.effects)
        AddRow(g, "Effects:", effects);
    else
        effects->hide();
    place(form.Check("DotsAtPoints", "Dots at shape points only"), f.dotsAtPoints);
    g->addWidget(new OutlinePicture(record.gType, c.points, general), 0, 2, 5, 1, Qt::AlignTop);
    g->setRowStretch(g->rowCount(), 1);
    tabs->addTab(general, "General");

    // texture
    auto* texture = new QWidget;
    texture->setObjectName("texture");
    auto* t = new QGridLayout(texture);
    auto* texList = new QListWidget(texture);
    texList->setObjectName("TextureList");
    auto* texPicture = new QLabel(texture);
    texPicture->setFixedSize(128, 128);
    auto* texLabel = new QLabel(texture);
    std::vector<std::string> names;
    std::vector<QCheckBox*> flagBoxes;
    QCheckBox* texSwitch = form.Check("TexLighted", "Constantly lighted at any time of day");
    if (f.texture) {
        t->addWidget(new QLabel("Select default texture for shape:"), 0, 0);
        t->addWidget(texList, 1, 0, 6, 1);
        t->addWidget(texPicture, 1, 1);
        t->addWidget(texLabel, 2, 1);
        int row = 3;
        for (const char* n : {"Night", "Winter", "Fall", "Spring"}) {
            QCheckBox* box = form.Check(n, QString(n) + " texture");
            flagBoxes.push_back(box);
            t->addWidget(box, row++, 1);
        }
        texSwitch->setVisible(f.textureSwitch);
        t->addWidget(texSwitch, row, 1);
        names = FillTexList(texFolder);
        for (const std::string& n : names)
            texList->addItem(ToQt(n));
    } else {
        texSwitch->hide();
        texList->hide();
        texPicture->hide();
        texLabel->hide();
        // At the top, as the mapping tab shows its own note.
        t->addWidget(new QLabel(ToQt(f.textureTabText)), 0, 0, Qt::AlignLeft | Qt::AlignTop);
        t->setRowStretch(1, 1);
    }
    tabs->addTab(texture, "Texture");

    // mapping
    auto* mapping = new QWidget;
    mapping->setObjectName("mapping");
    auto* m = new QVBoxLayout(mapping);
    MapPicture* map = nullptr;
    BandPicture* bands = nullptr;
    QSlider* outline = form.Slider("SliderColor", 0, 255);
    std::vector<QWidget*> bandButtons;
    QButtonGroup* bandGroup = form.Options("Bands", {"4 bands", "8 bands"}, bandButtons);
    QComboBox* forest = form.Combo("ForestType", ForestTypeList());
    auto* forestPicture = new QLabel(mapping);
    if (f.mapping) {
        map = new MapPicture(model, mapping);
        m->addWidget(map);
        m->addWidget(outline);
        auto* byDefault = new QPushButton("Default mapping", mapping);
        m->addWidget(byDefault);
        QObject::connect(byDefault, &QPushButton::clicked, &form, [&] {
            if (c.points)
                model.DefaultTexMap(*c.points);
            map->update();
        });
        QObject::connect(outline, &QSlider::valueChanged, &form, [&](int v) {
            model.values.SetInt("SliderColor", v);
            map->update();
        });
    } else {
        outline->hide();
    }
    if (f.bands) {
        m->addWidget(new QLabel("Select a texture band..."));
        bands = new BandPicture(model, mapping);
        m->addWidget(bands);
        for (QWidget* b : bandButtons)
            m->addWidget(b);
        QObject::connect(bandGroup, &QButtonGroup::idClicked, &form, [&](int id) {
            model.SetBandOption(id);
            bands->update();
        });
    } else {
        for (QWidget* b : bandButtons)
            b->hide();
    }
    if (f.forestType) {
        m->addWidget(new QLabel("Select forest type:"));
        m->addWidget(forest);
        forestPicture->setFixedSize(128, 128);
        m->addWidget(forestPicture);
        const auto showForest = [&, forestPicture](int i) {
            forestPicture->clear();
            if (!c.config || i < 0 || i > 1 || c.config->forest[i].side.empty())
                return;
            const std::string p =
                FindPathNoCase(c.programFolder + "resource/prev_" + c.config->forest[i].side);
            QImage img(PathToQt(p));
            if (!img.isNull())
                forestPicture->setPixmap(QPixmap::fromImage(img.scaled(128, 128)));
        };
        QObject::connect(forest, &QComboBox::currentIndexChanged, &form, showForest);
        showForest(record.ForestType);
    } else {
        forest->hide();
        forestPicture->hide();
    }
    if (!f.mappingTabText.empty())
        m->addWidget(new QLabel(ToQt(f.mappingTabText)));
    m->addStretch(1);
    tabs->addTab(mapping, "Mapping");

    // visibility
    auto* visibility = new QWidget;
    visibility->setObjectName("visibility");
    auto* v = new QGridLayout(visibility);
    AddRow(v, "Range:", form.Text("Range", [](int k) { return KeyNumber(k, false); }), "meters ");
    auto* times = new QWidget;
    auto* timeRow = new QHBoxLayout(times);
    timeRow->setContentsMargins(0, 0, 0, 0);
    timeRow->addWidget(form.Check("Day", "Day"));
    timeRow->addWidget(form.Check("NightTime", "Night"));
    timeRow->addWidget(form.Check("Dusk", "Dusk/ Dawn"));
    AddRow(v, "Time of day:", times);
    QCheckBox* noReduction = form.Check("NoPointReduction", "No point reduction");
    noReduction->setVisible(f.noPointReduction);
    v->addWidget(noReduction, v->rowCount(), 1);
    QCheckBox* noLevels = form.Check("NoTextureLevels", "No texture levels");
    noLevels->setVisible(f.noTextureLevels);
    v->addWidget(noLevels, v->rowCount(), 1);
    QComboBox* layer = form.Combo("Layer", LayerList());
    if (f.layer) {
        AddRow(v, "Layer:", layer);
        auto* note = new QLabel("Only use layers to force polygons and dotted lines above the runways (layer 28 and "
                                "above). Layered polygons are not editable in 'Arrange mode'.");
        note->setWordWrap(true);
        v->addWidget(note, v->rowCount(), 0, 1, 3);
    } else {
        layer->hide();
    }
    auto* converter = new QPushButton("Converter...", visibility);
    v->addWidget(converter, v->rowCount(), 1);
    QObject::connect(converter, &QPushButton::clicked, &form, [&] { ShowConverter(sep, &form); });
    v->setRowStretch(v->rowCount(), 1);
    tabs->addTab(visibility, "Visibility");

    auto* layout = new QVBoxLayout(&form);
    layout->addWidget(tabs);
    layout->addWidget(form.Buttons());
    form.cancelButton->setVisible(model.CancelVisible());
    form.Load(model.values);

    // The colour box shows the colour, or for a dotted line its entry number.
    const auto showColor = [&] {
        const std::int32_t col = model.values.Int("Color");
        if (record.gType == kDotLine) {
            // A dotted line's colour is a palette entry: the box shows that entry.
            Palette pal{};
            LoadPalette(c.programFolder, pal);
            const auto& e = pal[static_cast<std::size_t>(col) & 0xFF];
            colorBox->setStyleSheet(ColorBoxStyle(QColor(e[0], e[1], e[2])));
        } else {
            colorBox->setStyleSheet(ColorBoxStyle(ToColor(col)));
        }
    };
    showColor();
    QObject::connect(colorBox, &QPushButton::clicked, &form, [&] {
        if (record.gType == kDotLine) {
            int entry = model.values.Int("Color");
            if (RunFormColor(c.programFolder, entry, &form))
                model.values.SetInt("Color", entry);
        } else {
            const QColor q = QColorDialog::getColor(ToColor(model.values.Int("Color")), &form, "Pick color");
            if (q.isValid())
                model.values.SetInt("Color", RGB(q.red(), q.green(), q.blue()));
        }
        showColor();
    });

    // The texture list: selection, preview and label.
    const auto showTexture = [&](const std::string& name) {
        std::string label;
        const QImage big = TexturePicture(texFolder + name, c.programFolder, 256, 256, label);
        texPicture->setPixmap(QPixmap::fromImage(big.scaled(128, 128)));
        texLabel->setText(ToQt(label));
        if (map) {
            map->texture = big;
            map->update();
        }
        if (bands) {
            std::string l2;
            bands->texture = TexturePicture(texFolder + name, c.programFolder, 256, 256, l2);
            bands->update();
        }
    };
    if (f.texture) {
        const int index = FindTextureInList(names, record.tDayPath);
        if (index >= 0) {
            texList->setCurrentRow(index);
            showTexture(record.tDayPath);
        } else {
            texLabel->setText("(Texture not found)");
        }
        // Only a highlighted entry replaces the texture, also one not in the list.
        QObject::connect(texList, &QListWidget::itemSelectionChanged, &form, [&] {
            const int row = SelectedRow(texList);
            if (row < 0 || row >= static_cast<int>(names.size()))
                return;
            model.values["Texture"] = names[row];
            showTexture(names[row]);
        });
    }
    const auto enable = [&] {
        form.Save(model.values);
        const bool col = model.ColorEnabled();
        colorBox->setEnabled(col || !f.colored);
        transparency->setEnabled(col);
        texList->setEnabled(model.TextureEnabled());
        for (QCheckBox* b : flagBoxes)
            b->setEnabled(model.TextureEnabled());
    };
    // The texture's name isn't a control of the form; keep it across the saves.
    const std::string startTexture = model.values.Text("Texture");
    enable();
    model.values["Texture"] = startTexture;
    QObject::connect(colored, &QCheckBox::toggled, &form, [&] {
        const std::string tex = model.values.Text("Texture");
        enable();
        model.values["Texture"] = tex;
    });

    form.onOk = [&] {
        const std::string tex = model.values.Text("Texture");
        const std::string col = model.values.Text("Color");
        form.Save(model.values);
        model.values["Texture"] = tex;
        model.values["Color"] = col;
        return model.Ok(c.values, record) == OkResult::Stored;
    };
    form.canClose = [&] { return model.CanClose(); };
    tabs->setCurrentIndex(0);
    return form.exec() == QDialog::Accepted;
}

} // namespace fw::qt
