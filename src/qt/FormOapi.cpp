#include "qt/FormOapi.h"

#include <QColorDialog>
#include <QDesktopServices>
#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

#include "core/PathCase.h"
#include "dialogs/FormOapi.h"
#include "files/RegularFile.h"
#include "qt/FormBase.h"
#include "qt/FormTex.h"
#include "qt/QtText.h"
#include "render/Bitmap.h"

namespace fw::qt {

bool RunFormOapi(ObjectRecord& record, const ValueContext& ctx, ConfigRecord& config,
                 const std::string& programFolder, QWidget* parent)
{
    FormOapi model;
    model.Show_(record, config, programFolder, ctx.decimalSeparator);
    FormBase form(FormOapi::kName, FormOapi::kTitle, parent);
    const char sep = ctx.decimalSeparator;
    const auto decimal = [sep](int k) { return DecimalKey(k, sep); };
    auto* tabs = new QTabWidget(&form);

    auto* general = new QWidget;
    general->setObjectName("general");
    auto* g = new QGridLayout(general);
    QComboBox* macro = form.Combo("Combo1", model.macroList);
    auto* browse = new QPushButton("Browse", general);
    auto* macroRow = new QWidget;
    auto* mr = new QHBoxLayout(macroRow);
    mr->setContentsMargins(0, 0, 0, 0);
    mr->addWidget(macro, 1);
    mr->addWidget(browse);
    AddRow(g, "Select macro:", macroRow);
    auto* fileName = new QLabel;
    fileName->setObjectName("Label35");
    AddRow(g, "Filename:", fileName);
    auto* description = new QLabel;
    description->setWordWrap(true);
    g->addWidget(description, g->rowCount(), 1);
    std::array<QWidget*, 5> firstFields{};
    firstFields[0] = form.Text("Text2", [](int k) { return KeyNumber(k, false); });
    AddRow(g, "Visual range:", firstFields[0], "meters");
    firstFields[1] = form.Text("Text3", decimal);
    AddRow(g, "Heading:", firstFields[1]);
    firstFields[2] = form.Text("Text4", decimal);
    AddRow(g, "Elevation:", firstFields[2], "meters above ground");
    firstFields[3] = form.Text("Text5", decimal);
    AddRow(g, "Scale:", firstFields[3], "meters/unit");
    firstFields[4] = form.Combo("Combo2", DetailLevelList());
    AddRow(g, "Visible at detail level:", firstFields[4]);
    auto* preview = new QLabel;
    preview->setObjectName("Image1");
    preview->setFixedSize(160, 120);
    preview->setAlignment(Qt::AlignCenter);
    g->addWidget(preview, 0, 3, 6, 1);
    auto* edit = new QPushButton("Edit...", general);
    auto* reset = new QPushButton("Reset defaults", general);
    auto* buttonRow = new QHBoxLayout;
    buttonRow->addWidget(edit);
    buttonRow->addWidget(reset);
    buttonRow->addStretch(1);
    g->addLayout(buttonRow, g->rowCount(), 1);
    g->setRowStretch(g->rowCount(), 1);
    tabs->addTab(general, "General");

    auto* param = new QWidget;
    param->setObjectName("param");
    auto* p = new QGridLayout(param);
    std::array<FilteredLineEdit*, 10> params{};
    std::array<QLabel*, 10> descriptions{};
    for (int i = 0; i < 10; ++i) {
        const int field = 6 + i;
        params[i] = form.Text(ParamControl(field), [field](int k) { return ParamKey(field, k); });
        params[i]->onFocus = [&model, field] { model.currentField = field; };
        descriptions[i] = new QLabel;
        p->addWidget(new QLabel(ToQt(ParamMarkLabels()[i])), i, 0);
        p->addWidget(params[i], i, 1);
        p->addWidget(descriptions[i], i, 2);
    }
    auto* colour = new QPushButton("Color...", param);
    auto* paletteButton = new QPushButton("Palette...", param);
    auto* textureButton = new QPushButton("Texture...", param);
    auto* pr = new QHBoxLayout;
    pr->addWidget(colour);
    pr->addWidget(paletteButton);
    pr->addWidget(textureButton);
    pr->addStretch(1);
    p->addLayout(pr, 10, 0, 1, 3);
    tabs->addTab(param, "Parameters");

    auto* layout = new QVBoxLayout(&form);
    layout->addWidget(tabs);
    layout->addWidget(form.Buttons());

    const auto show = [&] {
        form.Load(model.values);
        fileName->setText(ToQt(model.values.Text("Label35")));
        description->setText(ToQt(model.description));
        for (int i = 0; i < 5; ++i)
            firstFields[i]->setEnabled(model.enabled[i]);
        for (int i = 0; i < 10; ++i) {
            params[i]->setEnabled(model.enabled[5 + i]);
            descriptions[i]->setText(ToQt(model.paramLabels[i]));
        }
        const std::string pic = model.PreviewPath();
        // Read as every reader reads: a regular file of a bitmap's size, never a pipe or device.
        std::string bytes;
        QImage img;
        if (!pic.empty() && ReadRegularFile(pic, kMaxBmpBytes, bytes))
            img.loadFromData(reinterpret_cast<const uchar*>(bytes.data()), static_cast<int>(bytes.size()));
        if (pic.empty() || img.isNull())
            preview->setText("No bitmap available...");
        else
            preview->setPixmap(QPixmap::fromImage(img.scaled(160, 120, Qt::KeepAspectRatio)));
    };
    show();
    QObject::connect(macro, &QComboBox::activated, &form, [&](int position) {
        form.Save(model.values);
        model.ChooseMacro(position);
        show();
    });
    QObject::connect(browse, &QPushButton::clicked, &form, [&] {
        const QString file = QFileDialog::getOpenFileName(&form, "Api Macro", PathToQt(config.APIPath),
                                                          "Api Macro (*.api);;All files (*)");
        if (file.isEmpty())
            return;
        form.Save(model.values);
        const int position = model.values.Int("Combo1");
        model.values.SetInt("Combo1", 0);
        // A file without a header that can be read is no macro: the dialog keeps what it had.
        if (!model.LoadMacro(PathFromQt(file))) {
            model.values.SetInt("Combo1", position);
            QMessageBox::information(&form, "Fieldwright", "Unable to read macro!\n" + file);
            return;
        }
        model.objectPath = model.path;
        show();
    });
    const auto missing = [&] {
        QMessageBox::information(&form, "Fieldwright", "Unable to find macro!, vbInformation");
    };
    QObject::connect(edit, &QPushButton::clicked, &form, [&] {
        if (!FileExists(FindPathNoCase(model.path)))
            return missing();
        // The desktop's handler for text files is the editor; without one the button would do nothing.
        const QString file = PathToQt(FindPathNoCase(model.path));
        if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file)))
            QMessageBox::information(&form, "Fieldwright", "No text editor could be started for " + file + ".");
    });
    QObject::connect(reset, &QPushButton::clicked, &form, [&] {
        form.Save(model.values);
        if (!model.LoadMacro(model.path))
            return missing();
        show();
    });
    // The paste buttons work on the parameter field that last had the focus.
    auto* timer = new QTimer(&form);
    QObject::connect(timer, &QTimer::timeout, &form, [&] {
        const bool on = model.currentField >= 6;
        colour->setEnabled(on);
        paletteButton->setEnabled(on);
        textureButton->setEnabled(on);
    });
    timer->start(100);
    const auto paste = [&](auto&& change) {
        form.Save(model.values);
        change();
        form.Load(model.values);
    };
    QObject::connect(colour, &QPushButton::clicked, &form, [&] {
        const QColor c = QColorDialog::getColor(QColor(128, 128, 128), &form);
        if (c.isValid())
            paste([&] { model.PasteColor(c.red(), c.green(), c.blue()); });
    });
    QObject::connect(paletteButton, &QPushButton::clicked, &form, [&] {
        int index = 16;
        if (RunFormColor(programFolder, index, &form))
            paste([&] { model.PastePalette(index); });
    });
    QObject::connect(textureButton, &QPushButton::clicked, &form, [&] {
        std::string name;
        if (RunFormTex("Select texture", AddBackslash(config.TEXPath), programFolder, "", false, name, &form))
            paste([&] { model.PasteTexture(name); });
    });

    form.onOk = [&] {
        form.Save(model.values);
        return model.Ok(ctx, record, config) == OkResult::Stored;
    };
    form.canClose = [&] { return model.CanClose(ctx.ui); };
    return form.exec() == QDialog::Accepted;
}

} // namespace fw::qt
