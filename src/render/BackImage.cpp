#include "render/BackImage.h"

#include <string>

#include "core/Numbers.h"
#include "editor/EditorCommon.h"
#include "ports/Ui.h"
#include "render/Bitmap.h"

namespace fw {

void MnuBloadremove(Session& s)
{
    Ui& ui = UiOf(s);
    FileDialogRequest r;
    r.filter = kBitmapFilter;
    r.startFolder = s.config.BackPicturePath;
    std::string path;
    if (!ui.ChooseFile(r, path) || path.empty())
        return;
    CBitmap bitmap(s.bitmap);
    ui.SetWaitCursor(true);
    const bool loaded = bitmap.GetPicture(path, &ui);
    if (loaded) {
        ShowFlagsRecord& f = s.showFlags;
        f.BackImagePath = path;
        // Both sizes are at most 800 by 600, so the halves fit with room to spare.
        f.BackImageLeft = static_cast<std::int32_t>(RoundHalfEven(-bitmap.Width() / 2.0));
        f.BackImageTop = static_cast<std::int32_t>(RoundHalfEven(-bitmap.Height() / 2.0));
        f.BackImagescale = 1.0;
        f.ShowBackPicture = 1;
    }
    ui.SetWaitCursor(false);
    PaintFrame(s);
}

void MnuBremove(Session& s)
{
    CBitmap bitmap(s.bitmap);
    if (!bitmap.isAvailable())
        return;
    const Answer a = UiOf(s).AskYesNo(
        "This will remove the background image from your project...\n\nDo you wish to proceed?");
    if (a != Answer::Yes)
        return;
    bitmap.DeleteGDI();
    s.showFlags.BackImagePath.clear();
    PaintFrame(s);
}

} // namespace fw
