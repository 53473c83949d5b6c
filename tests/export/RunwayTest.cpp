// Runways in "RUNWAYS", and their ILS and marker blocks in "NAVIGATION".
#include "ExportTestSupport.h"

namespace fw::test {
namespace {

TEST(RunwayExport, GoldenRunways)
{
    ExpectGoldens({
        // Lights, thresholds, extensions, ILS at each end and markers.
        {"runway_full",
         [](TestProject& t) {
             t.project.Altitude = 448.5;
             t.project.MagVar = -2.5;
             ObjectRecord& r = t.Object(kRunway, 100, -60);
             r.Rotation = 82.25;
             r.RwyNumber() = 8;
             r.RwyDesignator() = 1;
             r.Length() = 6500;
             r.RwyWidth() = 100;
             r.ThrOffN() = 300;
             r.ExtN() = 150;
             r.ShowTouchdownLights() = 1;
             r.Show300Markers() = 1;
             r.Surface() = kSurfaceConcrete;
             r.VasiBarsF() = 2;
             r.StrobesF() = 0;
             r.IlsSlopeF() = 2.75;
             r.IlsEnabledN() = 1;
             r.IlsEnabledF() = 1;
             r.IlsDmeF() = 0;
             r.IlsGlideSlopeF() = 0;
             r.IlsFreqN() = 109.3;
             r.IlsFreqF() = 110.15;
             r.IlsIdN() = "IABC";
             r.IlsNameN() = "Abc_Tower";
             r.IlsIdF() = "IDEF";
             r.IlsNameF() = "Def_Tower";
             r.MarkerEnabledN() = 1;
             r.markerEnabledF() = 1;
             r.MarkerMiddleF() = 0;
         }},
        // Without lights, ILS or markers it stays out of "NAVIGATION".
        {"runway_plain",
         [](TestProject& t) {
             ObjectRecord& r = t.Object(kRunway, 0, 0);
             r.Rotation = 0;
             r.RwyNumber() = 9;
             r.EnableLights() = 0;
             r.ShowBorderLine() = 0;
             r.Show150Markers() = 1;
         }},
        // A far heading that wraps loses its decimals.
        {"runway_heading_wrap",
         [](TestProject& t) {
             ObjectRecord& r = t.Object(kRunway, 0, 0);
             r.Rotation = 270.5;
             r.RwyNumber() = 27;
             r.RwyDesignator() = 3;
             r.IlsEnabledF() = 1;
         }},
    }, "export2");
}

TEST(RunwayExport, ReciprocalWithoutWrapKeepsItsDecimals)
{
    TestProject t;
    ObjectRecord& r = t.Object(kRunway, 0, 0);
    r.Rotation = 90.5;
    r.IlsEnabledF() = 1;
    r.MarkerEnabledN() = 1;
    // All six distances 0: no marker block, though the runway stands in "NAVIGATION".
    for (auto* d : {&r.MarkerInnerN(), &r.MarkerMiddleN(), &r.MarkerOuterN(), &r.MarkerInnerF(),
                    &r.MarkerMiddleF(), &r.MarkerOuterF()})
        *d = 0;
    const std::string text = ExportOf(t);
    ExpectWellFormed(text);
    EXPECT_EQ(CountLines(text, " 270.5"), 1u);
    EXPECT_EQ(CountLines(text, "Markers for Runway"), 0u);
    EXPECT_EQ(CountLines(text, "ILS for Runway"), 1u);
}

TEST(RunwayExport, LowIntensityPairAndLightCodes)
{
    TestProject t;
    ObjectRecord& a = t.Object(kRunway, 0, 0);
    a.LightIntensityLow = 1; // only a hand-made file holds 1 here
    ObjectRecord& b = t.Object(kRunway, 0, 0);
    b.ShowCenterLights() = 0;
    const std::string text = ExportOf(t);
    ExpectWellFormed(text);
    EXPECT_EQ(CountLines(text, "        LIGHTS 5"), 1u);
    EXPECT_EQ(CountLines(text, "        LIGHTS 1"), 1u);
    EXPECT_EQ(CountLines(text, "        ID 0"), 2u);
}

} // namespace
} // namespace fw::test
