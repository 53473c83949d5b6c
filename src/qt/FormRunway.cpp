#include "qt/FormRunway.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QTabWidget>
#include <QVBoxLayout>

#include "dialogs/ObjectForms.h"
#include "qt/FormBase.h"
#include "qt/QtText.h"

namespace fw::qt {

bool RunFormRunway(ObjectRecord& record, const ValueContext& ctx, QWidget* parent)
{
    FormRunway model;
    model.Show_(record, ctx.decimalSeparator);
    FormBase form(FormRunway::kName, FormRunway::kTitle, parent);
    const char sep = ctx.decimalSeparator;
    const auto decimal = [sep](int k) { return DecimalKey(k, sep); };
    const auto whole = [](int k) { return KeyNumber(k, false); };
    auto* tabs = new QTabWidget(&form);

    // General
    auto* general = new QWidget;
    auto* g = new QGridLayout(general);
    std::vector<std::string> numbers;
    for (int i = 0; i <= 36; ++i)
        numbers.push_back((i < 10 ? "0" : "") + std::to_string(i));
    QComboBox* number = form.Combo("RwyNumber", numbers);
    QComboBox* designator = form.Combo("RwyDesignator", DesignatorList());
    auto* numberRow = new QWidget;
    auto* nr = new QHBoxLayout(numberRow);
    nr->setContentsMargins(0, 0, 0, 0);
    nr->addWidget(number);
    nr->addWidget(designator);
    AddRow(g, "Runway number:", numberRow);
    AddRow(g, "Heading:", form.Text("Heading", decimal), "degrees (true)");
    AddRow(g, "Length:", form.Text("Length", whole), "feet");
    AddRow(g, "Width:", form.Text("Width", whole), "feet");
    AddRow(g, "Surface:", form.Combo("Surface", SurfaceList()));
    AddRow(g, "Threshold:", form.Text("ThrOffN", whole), "feet (both ends)");
    AddRow(g, "Extension:", form.Text("ExtN", whole), "feet (both ends)");
    g->setRowStretch(g->rowCount(), 1);
    tabs->addTab(general, "General");

    // Visuals
    auto* visuals = new QWidget;
    auto* vl = new QVBoxLayout(visuals);
    for (const auto& [n, caption] : std::vector<std::pair<std::string, QString>>{
             {"ShowBorderLine", "Border lines"}, {"ShowCenterLine", "Center line"}, {"ShowID", "Runway ID"},
             {"ShowTouchDownMarker", "Touchdown markers"}, {"ShowThresholdMarkers", "Threshold markers"},
             {"Show150Markers", "150 ft markers"}, {"Show300Markers", "300 ft markers"}})
        vl->addWidget(form.Check(n, caption));
    vl->addStretch(1);
    tabs->addTab(visuals, "Visuals");

    // Lights
    auto* lights = new QWidget;
    auto* ll = new QVBoxLayout(lights);
    QCheckBox* enableLights = form.Check("EnableLights", "Enable lights:");
    ll->addWidget(enableLights);
    auto* lightFields = new QWidget;
    auto* lg = new QGridLayout(lightFields);
    lg->addWidget(form.Check("ShowCenterLights", "Center lights"), 0, 1);
    lg->addWidget(form.Check("ShowTouchdownLights", "Touchdown lights"), 1, 1);
    std::vector<QWidget*> intensity;
    form.Options("LightIntensity", {"Low intensity", "High intensity"}, intensity);
    lg->addWidget(intensity[0], 2, 1);
    lg->addWidget(intensity[1], 2, 2);
    lg->addWidget(new QLabel("Near end"), 3, 1);
    lg->addWidget(new QLabel("Far end"), 3, 2);
    lg->addWidget(new QLabel("VASI / PAPI:"), 4, 0);
    lg->addWidget(form.Combo("VasiBarsN", VasiList()), 4, 1);
    lg->addWidget(form.Combo("VasiBarsF", VasiList()), 4, 2);
    lg->addWidget(new QLabel("Slope angle:"), 5, 0);
    lg->addWidget(form.Text("IlsSlopeN", decimal), 5, 1);
    lg->addWidget(form.Text("IlsSlopeF", decimal), 5, 2);
    lg->addWidget(new QLabel("Approach lights:"), 6, 0);
    lg->addWidget(form.Combo("AprLN", ApproachLightList()), 6, 1);
    lg->addWidget(form.Combo("AprLF", ApproachLightList()), 6, 2);
    lg->addWidget(new QLabel("Strobes:"), 7, 0);
    lg->addWidget(form.Text("StrobesN", whole), 7, 1);
    lg->addWidget(form.Text("StrobesF", whole), 7, 2);
    ll->addWidget(lightFields);
    ll->addStretch(1);
    tabs->addTab(lights, "Lights");

    // ILS and markers: one column per end.
    auto* ils = new QWidget;
    auto* il = new QGridLayout(ils);
    auto* markers = new QWidget;
    auto* ml = new QGridLayout(markers);
    std::array<QLabel*, 4> endLabels{};
    std::array<QWidget*, 2> ilsFields{}, markerFields{};
    std::array<QCheckBox*, 2> ilsEnable{}, markerEnable{};
    for (int e = 0; e < 2; ++e) {
        const std::string s = e == 0 ? "N" : "F";
        endLabels[e] = new QLabel;
        il->addWidget(endLabels[e], 0, e);
        ilsEnable[e] = form.Check("IlsEnabled" + s, "Enable");
        il->addWidget(ilsEnable[e], 1, e);
        ilsFields[e] = new QWidget;
        auto* f = new QGridLayout(ilsFields[e]);
        AddRow(f, "Frequency:", form.Text("IlsFreq" + s, decimal));
        AddRow(f, "ID:", form.Text("IlsId" + s, NameKey));
        AddRow(f, "Name:", form.Text("IlsName" + s, NameKey));
        AddRow(f, "Range:", form.Text("IlsRange" + s, whole), "Nm");
        f->addWidget(form.Check("IlsGlideSlope" + s, "Glide slope"), f->rowCount(), 1);
        f->addWidget(form.Check("IlsDme" + s, "DME"), f->rowCount(), 1);
        f->addWidget(form.Check("Ils3dObject" + s, "Show 3-D object"), f->rowCount(), 1);
        il->addWidget(ilsFields[e], 2, e);

        endLabels[2 + e] = new QLabel;
        ml->addWidget(endLabels[2 + e], 0, e);
        markerEnable[e] = form.Check(e == 0 ? "MarkerEnabledN" : "markerEnabledF", "Enable");
        ml->addWidget(markerEnable[e], 1, e);
        markerFields[e] = new QWidget;
        auto* mf = new QGridLayout(markerFields[e]);
        AddRow(mf, "Om:", form.Text("MarkerOuter" + s, whole), "meters");
        AddRow(mf, "Mm:", form.Text("MarkerMiddle" + s, whole), "meters");
        AddRow(mf, "Im:", form.Text("MarkerInner" + s, whole), "meters");
        ml->addWidget(markerFields[e], 2, e);
    }
    il->setRowStretch(3, 1);
    ml->setRowStretch(3, 1);
    tabs->addTab(ils, "ILS");
    tabs->addTab(markers, "Om/Mm/Im");

    auto* layout = new QVBoxLayout(&form);
    layout->addWidget(tabs);
    layout->addWidget(form.Buttons());
    form.Load(model.values);

    const auto refresh = [&] {
        form.Save(model.values);
        const auto captions = model.Rwy_caption();
        for (int e = 0; e < 2; ++e) {
            endLabels[e]->setText(ToQt(captions[e]));
            endLabels[2 + e]->setText(ToQt(captions[e]));
            ilsFields[e]->setEnabled(model.IlsEnabled(e));
            markerFields[e]->setEnabled(model.MarkersEnabled(e));
        }
        lightFields->setEnabled(model.LightsEnabled());
    };
    refresh();
    QObject::connect(number, &QComboBox::currentIndexChanged, &form, refresh);
    QObject::connect(designator, &QComboBox::currentIndexChanged, &form, refresh);
    for (QCheckBox* c : {enableLights, ilsEnable[0], ilsEnable[1], markerEnable[0], markerEnable[1]})
        QObject::connect(c, &QCheckBox::toggled, &form, refresh);
    form.onOk = [&] {
        form.Save(model.values);
        return model.Ok(ctx, record) == OkResult::Stored;
    };
    return form.exec() == QDialog::Accepted;
}

} // namespace fw::qt
