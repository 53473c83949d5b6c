#include "qt/FormOptions.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QPushButton>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include "dialogs/SettingsForms.h"
#include "qt/FormBase.h"
#include "qt/FormBrowse.h"
#include "qt/FormShape.h"
#include "qt/QtText.h"

namespace fw::qt {

namespace {
QColor ToColor(std::int32_t bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }
} // namespace

bool RunFormOptions(ConfigRecord& config, bool openGLActive, const ValueContext& ctx,
                    const std::string& programFolder, QWidget* parent)
{
    FormOptions model;
    model.Show_(config);
    FormBase form(FormOptions::kName, FormOptions::kTitle, parent);
    const auto whole = [](int k) { return KeyNumber(k, false); };
    auto* tabs = new QTabWidget(&form);

    auto* general = new QWidget;
    general->setObjectName("general");
    auto* g = new QVBoxLayout(general);
    g->addWidget(form.Check("Check1", "Enable OpenGL"));
    g->addWidget(new QLabel("OpenGL rendering works but it is not fully implemented..."));
    g->addStretch(1);
    tabs->addTab(general, "General");

    auto* shapes = new QWidget;
    shapes->setObjectName("shapes");
    auto* s = new QVBoxLayout(shapes);
    auto* bar = new QToolBar(shapes);
    static const char* const kKeys[6] = {"poly", "texpoly", "wideline", "dotline", "treeline", "forest"};
    static const char* const kCaptions[6] = {"Poly", "TexPoly", "Line/Road", "DotLine", "Tree line",
                                             "Voluminous forest"};
    for (int i = 0; i < 6; ++i) {
        QAction* act = bar->addAction(kCaptions[i]);
        act->setObjectName(kKeys[i]);
        QObject::connect(act, &QAction::triggered, &form, [&, i] {
            ShapeFormContext c{ctx, programFolder, &config, nullptr, false};
            RunFormShape(model.defaults[i], c, &form);
        });
    }
    s->addWidget(bar);
    s->addWidget(new QLabel("(Click on any buttton to change the defaults)"));
    s->addWidget(new QLabel("these settings only affect new shapes..."));
    s->addStretch(1);
    tabs->addTab(shapes, "Shapes");

    auto* paths = new QWidget;
    paths->setObjectName("paths");
    auto* p = new QGridLayout(paths);
    static const char* const kPathLabels[3] = {"Flight simulator:", "Release:", "Texture:"};
    for (int i = 0; i < 3; ++i) {
        const std::string name = "Text" + std::to_string(i + 1);
        p->addWidget(new QLabel(kPathLabels[i]), i, 0);
        p->addWidget(form.Text(name), i, 1);
        auto* browse = new QPushButton("Browse", paths);
        p->addWidget(browse, i, 2);
        QObject::connect(browse, &QPushButton::clicked, &form, [&, i, name] {
            form.Save(model.values);
            // The prompt goes inside the picker: as a title it would be cut.
            QString folder;
            if (!RunFormBrowse(ToQt(PathPrompts()[i]), PathToQt(model.values.Text(name)), folder, &form))
                return;
            model.TakeFolder(i, PathFromQt(folder));
            form.Load(model.values);
        });
    }
    p->setRowStretch(3, 1);
    tabs->addTab(paths, "Paths");

    auto* grid = new QWidget;
    grid->setObjectName("grid");
    auto* gg = new QGridLayout(grid);
    AddRow(gg, "Spacing 1:", form.Text("Tg1", whole), "meters");
    AddRow(gg, "Spacing 2:", form.Text("Tg2", whole), "meters");
    AddRow(gg, "Spacing 3:", form.Text("Tg3", whole), "meters");
    auto* pick = new QPushButton(grid);
    pick->setObjectName("Pg1");
    pick->setFixedSize(40, 20);
    AddRow(gg, "Pick grid color:", pick);
    const auto showColour = [&] {
        pick->setStyleSheet(QString("background-color: %1").arg(ToColor(model.gridColor).name()));
    };
    showColour();
    QObject::connect(pick, &QPushButton::clicked, &form, [&] {
        const QColor c = QColorDialog::getColor(ToColor(model.gridColor), &form, "Pick color");
        if (c.isValid())
            model.gridColor = RGB(c.red(), c.green(), c.blue());
        showColour();
    });
    gg->setRowStretch(gg->rowCount(), 1);
    tabs->addTab(grid, "Grid");

    auto* layout = new QVBoxLayout(&form);
    layout->addWidget(tabs);
    layout->addWidget(form.Buttons());
    form.Load(model.values);
    form.onOk = [&] {
        form.Save(model.values);
        return model.Ok(ctx, config, openGLActive) == OkResult::Stored;
    };
    return form.exec() == QDialog::Accepted;
}

} // namespace fw::qt
