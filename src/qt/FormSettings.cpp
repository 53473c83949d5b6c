#include "qt/FormSettings.h"

#include <cstdio>

#include <QGridLayout>
#include <QGroupBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "dialogs/SettingsForms.h"
#include "qt/FormBase.h"
#include "qt/FormConverter.h"
#include "qt/FormTex.h"
#include "qt/QtText.h"

namespace fw::qt {

namespace {
QColor ToColor(std::int32_t bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

QLabel* Note(const QString& text)
{
    auto* l = new QLabel(text);
    l->setWordWrap(true);
    return l;
}
} // namespace

bool RunFormOptimize(ProjectRecord& working, const ValueContext& ctx, const ConfigRecord& config,
                     const std::string& programFolder, QWidget* parent)
{
    FormOptimize model;
    model.Show_(working);
    FormBase form(FormOptimize::kName, FormOptimize::kTitle, parent);
    const auto whole = [](int k) { return KeyNumber(k, false); };
    auto* steps = new QGridLayout;
    for (int i = 0; i < 3; ++i)
        AddRow(steps, QString("Visibility step %1:").arg(i + 2), form.Text("Text" + std::to_string(5 + i), whole),
               "meters");
    auto* frame = new QGroupBox("Mip-map emulation");
    auto* fg = new QGridLayout(frame);
    std::array<QLabel*, 4> swatches{};
    for (int i = 0; i < 4; ++i) {
        fg->addWidget(form.Text("Text" + std::to_string(i + 1), TextKey), i, 0);
        auto* pick = new QPushButton("...", frame);
        fg->addWidget(pick, i, 1);
        swatches[i] = new QLabel(frame);
        swatches[i]->setObjectName(QString("PicT%1").arg(i + 1));
        swatches[i]->setFixedSize(20, 20);
        fg->addWidget(swatches[i], i, 2);
        QObject::connect(pick, &QPushButton::clicked, &form, [&, i] {
            std::string name;
            if (!RunFormTex("Select a texture", AddBackslash(config.TEXPath), programFolder, "", false, name, &form))
                return;
            // The picker's answer: the name and a 16-character field with its average colour.
            std::int32_t colour = 0;
            char field[32];
            if (AverageTextureColor(AddBackslash(config.TEXPath) + name, programFolder, colour))
                std::snprintf(field, sizeof field, "%16d", static_cast<int>(colour));
            else
                std::snprintf(field, sizeof field, "%-16s", "NoTex");
            form.Save(model.values);
            model.TakePickedTexture(i, name + field);
            form.Load(model.values);
            swatches[i]->setStyleSheet(QString("background-color: %1").arg(ToColor(model.colors[i]).name()));
        });
    }
    auto* layout = new QVBoxLayout(&form);
    layout->addLayout(steps);
    layout->addWidget(frame);
    layout->addWidget(form.Buttons("&Cancel"));
    form.Load(model.values);
    for (int i = 0; i < 4; ++i)
        swatches[i]->setStyleSheet(QString("background-color: %1").arg(ToColor(model.colors[i]).name()));
    if (auto* first = form.findChild<QLineEdit*>("Text5")) {
        first->setFocus();
        first->selectAll();
    }
    form.onOk = [&] {
        form.Save(model.values);
        return model.Ok(ctx, working) == OkResult::Stored;
    };
    return form.exec() == QDialog::Accepted;
}

bool RunFormSettings(ProjectRecord& project, bool isNew, const ValueContext& ctx, const ConfigRecord& config,
                     const std::string& programFolder, QWidget* parent)
{
    FormSettings model;
    model.Show_(project, isNew, ctx.decimalSeparator);
    FormBase form(FormSettings::kName, FormSettings::kTitle, parent);
    const char sep = ctx.decimalSeparator;
    const auto decimal = [sep](int k) { return DecimalKey(k, sep); };
    auto* tabs = new QTabWidget(&form);

    auto* general = new QWidget;
    general->setObjectName("general");
    auto* g = new QGridLayout(general);
    AddRow(g, "Airport name:", form.Text("Text1", TextKey));
    AddRow(g, "Comment:", form.Text("Text4", TextKey));
    AddRow(g, "Copyright:", form.Text("Text7", TextKey));
    g->setRowStretch(g->rowCount(), 1);
    tabs->addTab(general, "General");

    auto* location = new QWidget;
    location->setObjectName("location");
    auto* l = new QGridLayout(location);
    AddRow(l, "Latitude:", form.Text("Text3", decimal));
    AddRow(l, "Longitude:", form.Text("Text5", decimal));
    AddRow(l, "Altitude:", form.Text("Text8", decimal), "meters");
    AddRow(l, "MagVar:", form.Text("Text9", decimal));
    l->addWidget(Note("The latitude and longitude must be entered in decimal format (e.g. -40.5, not W40:30:00 or "
                      "W40:30.00)"),
                 l->rowCount(), 0, 1, 3);
    auto* converter = new QPushButton("Converter...", location);
    l->addWidget(converter, l->rowCount(), 1);
    QObject::connect(converter, &QPushButton::clicked, &form, [&] { ShowConverter(sep, &form); });
    l->setRowStretch(l->rowCount(), 1);
    tabs->addTab(location, "Location");

    auto* scales = new QWidget;
    scales->setObjectName("scales");
    auto* s = new QGridLayout(scales);
    AddRow(s, "Polygons:", form.Combo("Combo3", ScaleTexts(PolyScaleValues(), sep, false)));
    s->addWidget(Note("(default: 1 - use 0.5 or smaller for full design accuracy)"), s->rowCount(), 1);
    AddRow(s, "Lines:", form.Combo("Combo4", ScaleTexts(LineScaleValues(), sep, true)));
    s->addWidget(Note("(default: <automatic>)"), s->rowCount(), 1);
    AddRow(s, "Dotted lines:", form.Combo("Combo5", ScaleTexts(DotLineScaleValues(), sep, false)));
    s->addWidget(Note("(default: 0.5)"), s->rowCount(), 1);
    s->setRowStretch(s->rowCount(), 1);
    tabs->addTab(scales, "Scales");

    auto* advanced = new QWidget;
    advanced->setObjectName("advanced");
    auto* a = new QVBoxLayout(advanced);
    a->addWidget(Note("These features are for the advanced scenery designer only."));
    a->addWidget(form.Check("Check1", "Enable multiple levels of complexity (MLCs)"));
    a->addWidget(form.Check("Check2", "Enable mip-map emulation for selected textures (click on 'Settings')"));
    auto* settings = new QPushButton("&Settings...", advanced);
    a->addWidget(settings, 0, Qt::AlignLeft);
    a->addStretch(1);
    QObject::connect(settings, &QPushButton::clicked, &form,
                     [&] { RunFormOptimize(model.working, ctx, config, programFolder, &form); });
    tabs->addTab(advanced, "Advanced");

    auto* layout = new QVBoxLayout(&form);
    layout->addWidget(tabs);
    layout->addWidget(form.Buttons());
    form.cancelButton->setEnabled(model.CancelEnabled());
    form.Load(model.values);
    form.onOk = [&] {
        form.Save(model.values);
        return model.Ok(ctx, project) == OkResult::Stored;
    };
    form.canClose = [&] { return model.CanClose(); };
    return form.exec() == QDialog::Accepted;
}

} // namespace fw::qt
