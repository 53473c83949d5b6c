// The main window's commands, the direct enabling of the tools, and the menu state of the timer.
#pragma once

#include <map>
#include <optional>
#include <string>

#include "core/Session.h"

namespace fw {

// Direct enabling, written at once by the tools.
void Menu_DisableToolBar(Session& s);
void Menu_EnableToolBar(Session& s);
void Menu_ToolBarLayer(Session& s);
void Menu_Disable(Session& s);
void Menu_DisableLayer(Session& s);
void Menu_Enable(Session& s);

// Tool button keys in tool-strip order, and the five top menus.
extern const char* const kToolKeys[kToolButtons];
extern const char* const kTopMenuNames[kTopMenus];
// The top menu a command sits in ("MnuEdit", ...), empty for the canvas pop-ups and unknown names.
std::string TopMenuOf(const std::string& command);

// Opening MnuEdit, MnuSelection, MnuBackground or MnuHelp ends a free edit or an image edit.
void OpenTopMenu(Session& s, const std::string& menu);

// Runs a menu command of the editor by name; false for a name it doesn't know.
bool RunCommand(Session& s, const std::string& name);

// The eight zoom levels and their commands; one row up or down.
void ZoomStep(Session& s, bool in);
// The mouse wheel over the canvas: `steps` rows of the zoom levels, positive in and negative out,
// stopping at 6.25% and 400%, about the pixel (x, y) of the drawable area, so that the world
// point under it stays under it. The view's offset is held inside the work area as a pan holds
// it, but never pulled in from beyond it (after "Center here"). Only when the canvas is idle
// (EditState 0), as for the zoom keys; nothing but the zoom and the offset changes.
void WheelZoom(Session& s, int steps, double x, double y);

// "Proj&ect settings...": the project settings dialog on a copy of the record; OK stores it and
// marks the project changed, without an undo step.
void MnuFsettings(Session& s);

// The double click in idle, and Ctrl+P.
void MnuSshapeproperties(Session& s);

// A flag the tick doesn't write is empty: the item keeps what it had.
struct MenuItemState {
    std::optional<bool> enabled;
    std::optional<bool> checked;
    friend bool operator==(const MenuItemState&, const MenuItemState&) = default;
};

// What a tick of Timer1 writes. items holds the menu items the tick writes in this state; every
// other item, and every flag left empty, keeps what it had. topMenus and toolButtons are the direct enabling of the
// tools (enabled only), by menu name and tool key.
struct MenuState {
    std::map<std::string, MenuItemState> items;
    std::map<std::string, bool> topMenus;
    std::map<std::string, bool> toolButtons;
    std::string panel3; // "Rot: 12.5°" during a free rotate, else empty
    std::string panel4; // latitude of the mouse
    std::string panel5; // longitude of the mouse
    std::string panel6; // "25 %"
};

MenuState ComputeMenuState(const Session& s);

// Panels 4 and 5 for a world point under the mouse.
void StatusPosition(const Session& s, const Point& p, std::string& latitude, std::string& longitude);

} // namespace fw
