// QtUi's shape and object dialogs: each record type to its form.
#include "qt/FormOapi.h"
#include "qt/FormRunway.h"
#include "qt/FormShape.h"
#include "qt/FormSign.h"
#include "qt/FormSmallObjects.h"
#include "qt/QtUi.h"

namespace fw::qt {

namespace {

bool ShapeDialog(Session* s, QWidget* parent, ShapeRecord& shape, const PointList* points, bool mustComplete)
{
    if (!s)
        return false;
    ShapeFormContext c{s->values(), s->programFolder, &s->config, points, mustComplete};
    return RunFormShape(shape, c, parent);
}

} // namespace

bool QtUi::ShapeProperties(ShapeRecord& shape, const PointList* points)
{
    return ShapeDialog(session_, parent_, shape, points, false);
}

bool QtUi::NewShapeProperties(ShapeRecord& shape, const PointList* points)
{
    return ShapeDialog(session_, parent_, shape, points, true);
}

bool QtUi::ObjectProperties(ObjectRecord& object)
{
    if (!session_)
        return false;
    const ValueContext ctx = session_->values();
    switch (object.oType) {
    case kRunway: return RunFormRunway(object, ctx, parent_);
    case kApi: return RunFormOapi(object, ctx, session_->config, session_->programFolder, parent_);
    case kVor: return RunFormOvor(object, ctx, parent_);
    case kNdb: return RunFormOndb(object, ctx, parent_);
    case kInit: return RunFormInit(object, ctx, parent_);
    case kExclude: return RunFormOexclude(object, ctx, parent_);
    case kSign:
        return RunFormSign(object, ctx, AddBackslash(session_->config.TEXPath) + "fwt_sign1.bmp", session_->programFolder,
                           parent_);
    default: return false;
    }
}

} // namespace fw::qt
