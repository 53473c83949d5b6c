// Scripted answers: the words reach the right form, field and button, and each ending is kept.
#include <gtest/gtest.h>

#include <tuple>

#include "core/Config.h"
#include "dialogs/FormAnswers.h"
#include "dialogs/SettingsForms.h"
#include "support/ScriptedUi.h"

namespace fw {
namespace {

using Result = FormAnswerResult;

struct Answers : ::testing::Test {
    ScriptedUi ui;
    ValueContext ctx{'.', &ui};
    ConfigRecord config;
    std::string problem;
    void SetUp() override { ResetConfig(config, "/prog/"); }
    Result Object(const std::vector<std::string>& words, ObjectRecord& o)
    {
        return AnswerObjectForm(words, o, config, "/prog/", ctx, problem);
    }
    Result Shape(const std::vector<std::string>& words, ShapeRecord& s, bool isNew = false,
                 const FormButtons& buttons = {})
    {
        static const PointList line{{0, 0}, {10, 0}};
        return AnswerShapeForm(words, s, isNew ? &line : nullptr, isNew, ctx, problem, buttons);
    }
    static ObjectRecord Fresh(int type)
    {
        ObjectRecord o;
        ResetObject(o, type, "/prog/");
        return o;
    }
    static ShapeRecord FreshShape(int type)
    {
        ShapeRecord s;
        s.gType = static_cast<std::uint8_t>(type);
        ResetShape(s, type);
        return s;
    }
};

TEST_F(Answers, ObjectFieldsRunTheChecksARefusalOrCancelKeepsTheRecord)
{
    ObjectRecord o = Fresh(kNdb);
    EXPECT_EQ(Object({"FormOndb", "Text1=526.6", "ok"}, o), Result::Refused);
    EXPECT_EQ(o.Frequency(), 200.0);
    EXPECT_EQ(Object({"FormOndb", "Text1=526.5", "Text4=Home_NDB", "Check1=1", "ok"}, o), Result::Stored);
    EXPECT_EQ((std::tuple{o.Frequency(), o.NavName(), o.NdbVisible()}), (std::tuple{526.5, "Home_NDB", 1}));
    EXPECT_EQ(Object({"FormOndb", "Text1=300", "cancel"}, o), Result::Cancelled);
    EXPECT_EQ(o.Frequency(), 526.5);
    ObjectRecord sign = Fresh(kSign);
    EXPECT_EQ(Object({"FormSign", "Caption=Direction_ArrowLeft_A", "Heading=45", "ok"}, sign), Result::Stored);
    EXPECT_EQ(sign.Caption(), " Direction_ArrowLeft_A");
    EXPECT_EQ(sign.Rotation, 45.0);
}

TEST_F(Answers, WrongFormsFieldsButtonsAndEndings)
{
    ObjectRecord o = Fresh(kVor);
    const std::pair<std::vector<std::string>, std::string> wrong[] = {
        {{"FormOndb", "ok"}, "the dialog open is FormOvor, not FormOndb"},
        {{"FormOvor", "Text9=1", "ok"}, "FormOvor has no field Text9"}};
    for (const auto& [words, why] : wrong) {
        EXPECT_EQ(Object(words, o), Result::Refused);
        EXPECT_EQ(problem, why);
    }
    EXPECT_EQ(Object({"FormOvor", "Text1"}, o), Result::Refused);
    ObjectRecord sign = Fresh(kSign);
    EXPECT_EQ(Object({"FormSign", "Type9=1", "Type1=", "ok"}, sign), Result::Refused);
    EXPECT_EQ(problem, "FormSign has no field Type9");

    // A new shape closes only with OK, and a comma is no decimal mark on a point system.
    ShapeRecord s = FreshShape(kWideLine);
    EXPECT_EQ(Shape({"FormShape", "cancel"}, s, true), Result::Refused);
    EXPECT_EQ(Shape({"FormShape", "Value=12,5", "Range=900", "ok"}, s, true), Result::Refused);
    EXPECT_EQ(Shape({"FormShape", "Value=12.5", "Range=900", "Effects=2", "ok"}, s, true), Result::Stored);
    EXPECT_EQ((std::tuple{s.gLineWidth, s.gLineType, s.vRange}), (std::tuple{12.5, 2, 900}));
    // The window's close box is Cancel where the dialog allows it.
    EXPECT_EQ(Shape({"FormShape", "Value=9", "close"}, s), Result::Cancelled);
    EXPECT_EQ(s.gLineWidth, 12.5);

    FormButtons buttons;
    int shown = 0;
    buttons.converter = [&] { ++shown; };
    EXPECT_EQ(Shape({"FormShape", "Converter", "Value=3", "ok"}, s, false, buttons), Result::Stored);
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(s.gLineWidth, 3.0);
    EXPECT_EQ(Shape({"FormShape", "Settings", "ok"}, s, false, buttons), Result::Refused);
    EXPECT_EQ(problem, "FormShape has no button Settings");
}

TEST_F(Answers, ProjectSettingsValuesCarryEscapedBytesAndButtonsArePressedInOrder)
{
    ProjectRecord p;
    ResetProject(p);
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "cancel"}, p, true, ctx, problem), Result::Refused);
    EXPECT_EQ(problem, "a new project's settings close only with OK");
    // "%20" is a blank, "%25" a percent sign; a button the form doesn't have is refused.
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "Text1=Big%20Field%2525", "ok"}, p, false, ctx, problem),
              Result::Stored);
    EXPECT_EQ(p.Name, "Big Field%25");
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "Launch", "ok"}, p, false, ctx, problem), Result::Refused);
    EXPECT_EQ(problem, "FormSettings has no button Launch");

    // "Settings" opens FormOptimize on the working copy; its OK is stored with the settings' OK.
    FormButtons buttons;
    int optimized = 0, converters = 0;
    buttons.optimize = [&](ProjectRecord& working) {
        ++optimized;
        std::string why;
        return AnswerOptimizeForm({"FormOptimize", "Text5=300", "Text1=grass.bmp", "ok"}, working, ctx, why) ==
               Result::Stored;
    };
    buttons.converter = [&] { ++converters; };
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "Settings", "Converter", "cancel"}, p, false, ctx, problem, buttons),
              Result::Cancelled);
    EXPECT_EQ(p.Distance[0], 100);
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "Settings", "Converter", "ok"}, p, false, ctx, problem, buttons),
              Result::Stored);
    EXPECT_EQ(optimized, 2);
    EXPECT_EQ(converters, 2);
    EXPECT_EQ(p.Distance[0], 300);
    EXPECT_EQ(p.Texture[0], "grass.bmp");
}

TEST_F(Answers, PreferencesWithTheirShapeAndFolderButtons)
{
    ConfigRecord c = config;
    // Grid spacings are checked in order, each 0..1000.
    EXPECT_EQ(AnswerOptionsForm({"FormOptions", "Tg2=1001", "ok"}, c, false, ctx, problem), Result::Refused);
    EXPECT_EQ(ui.Messages(), std::vector<std::string>{"You entered a wrong value for grid spacing 2!"});
    EXPECT_EQ(c.GridDist[1], 200);
    // The default shape's dialog and the folder browser are asked through the Ui.
    ui.files.push_back("/scenery/out");
    EXPECT_EQ(AnswerOptionsForm({"FormOptions", "Tg1=25", "Pg1=255", "Check1=1", "poly", "Browse2", "ok"}, c, false,
                                ctx, problem),
              Result::Stored);
    EXPECT_EQ(c.GridDist[0], 25);
    EXPECT_EQ(c.GridColor4, 255);
    EXPECT_EQ(c.EnableOpenGL, 1);
    EXPECT_EQ(c.SceneryPath, AddBackslash("/scenery/out"));
    EXPECT_EQ(ui.Messages().back(), "OpenGL rendering will only be enabled/disabled after restarting Fieldwright...");
    EXPECT_EQ(ui.calls[ui.calls.size() - 2].kind, "folder");
    EXPECT_EQ(ui.calls[ui.calls.size() - 2].text, PathPrompts()[1]);
    EXPECT_EQ(AnswerOptionsForm({"FormOptions", "Pg1=red", "ok"}, c, false, ctx, problem), Result::Refused);
    EXPECT_EQ(problem, "Pg1 takes a colour, a number 0 to 16777215");
}

// The conversions themselves are ShapeAndSettingsTest's.
TEST_F(Answers, ConverterKeepsItsFieldsAndConvertsOnBothTabs)
{
    std::map<std::string, std::string> fields;
    const auto answer = [&](const std::vector<std::string>& words) {
        return AnswerConverterForm(words, fields, ctx, problem);
    };
    EXPECT_EQ(answer({"FormConverter", "Text3=1000", "OutputUnit=2", "dist", "close"}), Result::Cancelled);
    EXPECT_EQ(fields["Text4"], "3280.8");
    EXPECT_EQ(answer({"FormConverter", "Text1=S40%2030", "lat", "close"}), Result::Cancelled);
    EXPECT_EQ(fields["Text2"], "-40.5");
    EXPECT_EQ(fields["Text3"], "1000"); // the other tab keeps what was typed
    EXPECT_EQ(answer({"FormConverter", "Text4=1", "close"}), Result::Refused);
    EXPECT_EQ(problem, "the converter's result Text4 can't be typed into");
    EXPECT_EQ(answer({"FormConverter", "dist", "ok"}), Result::Refused);
    EXPECT_EQ(problem, "the converter has no OK or Cancel: its answer ends with close");
}

TEST_F(Answers, OutOfRangeListPositionsAndTicksNeverLeaveTheRecordsBounds)
{
    ObjectRecord r = Fresh(kRunway);
    EXPECT_EQ(Object({"FormRunway", "Surface=-5", "VasiBarsN=999", "RwyNumber=-3", "RwyDesignator=77", "AprLF=x",
                      "LightIntensity=5", "ok"},
                     r),
              Result::Stored);
    // No row chosen: the surface stays.
    EXPECT_EQ((std::vector<int>{r.Surface(), r.VasiBarsN(), r.RwyNumber(), r.RwyDesignator(), r.AprLF()}),
              (std::vector<int>{kSurfaceAsphalt, 8, 0, 3, 0}));
    ObjectRecord a = Fresh(kApi);
    EXPECT_EQ(Object({"FormOapi", "Combo1=99999", "Combo2=-4", "ok"}, a), Result::Stored);
    EXPECT_EQ(a.DetailLevel(), 0);
    EXPECT_EQ(Object({"FormOapi", "Combo1=-7", "ok"}, a), Result::Stored);
    ShapeRecord t = FreshShape(kTexPoly);
    EXPECT_EQ(Shape({"FormShape", "SliderColor=4000", "Layer=-1", "ok"}, t), Result::Stored);
    EXPECT_EQ(t.mSliderColor, 255);
    EXPECT_EQ(t.vLayer, 0);
}

} // namespace
} // namespace fw
