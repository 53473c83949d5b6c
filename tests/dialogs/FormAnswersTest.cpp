#include <gtest/gtest.h>

#include "core/Config.h"
#include "dialogs/FormAnswers.h"
#include "platform/ScriptedUi.h"

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
    static ObjectRecord Fresh(int type)
    {
        ObjectRecord o;
        ResetObject(o, type, "/prog/");
        return o;
    }
};

TEST_F(Answers, ObjectFieldsRunTheChecksAndARefusalKeepsTheRecord)
{
    ObjectRecord o = Fresh(kNdb);
    EXPECT_EQ(Object({"FormOndb", "Text1=526.6", "ok"}, o), Result::Refused);
    EXPECT_EQ(ui.Messages(), std::vector<std::string>{"You entered a wrong value for the frequency!"});
    EXPECT_EQ(o.Frequency(), 200.0);
    EXPECT_EQ(Object({"FormOndb", "Text1=526.5", "Text4=Home_NDB", "Check1=1", "ok"}, o), Result::Stored);
    EXPECT_EQ(o.Frequency(), 526.5);
    EXPECT_EQ(o.NavName(), "Home_NDB");
    EXPECT_EQ(o.NdbVisible(), 1);
    EXPECT_EQ(Object({"FormOndb", "Text1=300", "cancel"}, o), Result::Cancelled);
    EXPECT_EQ(o.Frequency(), 526.5);
}

TEST_F(Answers, WrongFormsFieldsAndShapes)
{
    ObjectRecord o = Fresh(kVor);
    EXPECT_EQ(Object({"FormOndb", "ok"}, o), Result::Refused);
    EXPECT_EQ(problem, "the dialog open is FormOvor, not FormOndb");
    EXPECT_EQ(Object({"FormOvor", "Text9=1", "ok"}, o), Result::Refused);
    EXPECT_EQ(problem, "FormOvor has no field Text9");
    EXPECT_EQ(Object({"FormOvor", "Text1"}, o), Result::Refused);
    ObjectRecord sign = Fresh(kSign);
    EXPECT_EQ(Object({"FormSign", "Type9=1", "Type1=", "ok"}, sign), Result::Refused);
    EXPECT_EQ(problem, "FormSign has no field Type9");

    ShapeRecord s;
    s.gType = kWideLine;
    ResetShape(s, kWideLine);
    const PointList pts{{0, 0}, {10, 0}};
    EXPECT_EQ(AnswerShapeForm({"FormShape", "cancel"}, s, &pts, true, ctx, problem), Result::Refused);
    EXPECT_EQ(AnswerShapeForm({"FormShape", "Value=12,5", "Range=900", "ok"}, s, &pts, true, ctx, problem),
              Result::Refused); // a comma on a point system
    EXPECT_EQ(AnswerShapeForm({"FormShape", "Value=12.5", "Range=900", "Effects=2", "ok"}, s, &pts, true, ctx, problem),
              Result::Stored);
    EXPECT_EQ(s.gLineWidth, 12.5);
    EXPECT_EQ(s.gLineType, 2);
    EXPECT_EQ(s.vRange, 900);
}

TEST_F(Answers, SignsAndProjectSettings)
{
    ObjectRecord o = Fresh(kSign);
    EXPECT_EQ(Object({"FormSign", "Caption=Direction_ArrowLeft_A", "Heading=45", "ok"}, o), Result::Stored);
    EXPECT_EQ(o.Caption(), " Direction_ArrowLeft_A");
    EXPECT_EQ(o.Rotation, 45.0);

    ProjectRecord p;
    ResetProject(p);
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "cancel"}, p, true, ctx, problem), Result::Refused);
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "Text5=180", "ok"}, p, true, ctx, problem), Result::Refused);
    EXPECT_EQ(AnswerProjectForm({"FormSettings", "Text1=Field", "Text5=179", "ok"}, p, true, ctx, problem),
              Result::Stored);
    EXPECT_EQ(p.Name, "Field");
    EXPECT_EQ(p.LongitudeDegree, 179.0);
}

TEST_F(Answers, OutOfRangeListPositionsAndTicksNeverLeaveTheRecordsBounds)
{
    ObjectRecord r = Fresh(kRunway);
    EXPECT_EQ(Object({"FormRunway", "Surface=-5", "VasiBarsN=999", "RwyNumber=-3", "RwyDesignator=77", "AprLF=x",
                      "LightIntensity=5", "ok"},
                     r),
              Result::Stored);
    EXPECT_EQ(r.Surface(), kSurfaceAsphalt); // no row chosen: the surface stays
    EXPECT_EQ(r.VasiBarsN(), 8);
    EXPECT_EQ(r.RwyNumber(), 0);
    EXPECT_EQ(r.RwyDesignator(), 3);
    EXPECT_EQ(r.AprLF(), 0);

    ObjectRecord a = Fresh(kApi);
    EXPECT_EQ(Object({"FormOapi", "Combo1=99999", "Combo2=-4", "ok"}, a), Result::Stored);
    EXPECT_EQ(a.DetailLevel(), 0);
    EXPECT_EQ(Object({"FormOapi", "Combo1=-7", "ok"}, a), Result::Stored);

    ShapeRecord t;
    t.gType = kTexPoly;
    ResetShape(t, kTexPoly);
    EXPECT_EQ(AnswerShapeForm({"FormShape", "SliderColor=4000", "Layer=-1", "ok"}, t, nullptr, false, ctx, problem),
              Result::Stored);
    EXPECT_EQ(t.mSliderColor, 255);
    EXPECT_EQ(t.vLayer, 0);
}

} // namespace
} // namespace fw
