// Sessions built in code for the editor's tests: a scripted Ui, a canvas, records placed directly.
#pragma once

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <unistd.h>

#include "core/Session.h"
#include "replay/Replay.h"

namespace fw::test {

using Ids = std::vector<std::uint16_t>;

inline const std::string kOneFlatten = "You already drew a flatten polygon...\n\nOnly one flatten polygon can "
                                       "be specified for every Fieldwright project.";

struct EditorFixture {
    // An 800 by 600 canvas at 100 % with world (0,0) at pixel (400,300).
    explicit EditorFixture(double zoom = 1.0)
        : replay(std::make_unique<ReplaySession>(FW_PROGRAM_DIR))
    {
        std::string error;
        replay->Run("canvas 800 600", error);
        s().view.setZoom(zoom);
    }

    Session& s() { return replay->session; }
    ReplayUi& ui() { return replay->ui; }
    CSelection& Sel() { return s().editor.selection; }
    // Whether the project is marked changed, and whether there is an undo step.
    std::pair<int, int> Marked() { return {s().dirty, s().canUndo}; }

    // Runs script lines; fails the test on a line that can't run.
    void Run(const std::vector<std::string>& lines)
    {
        for (const auto& l : lines) {
            std::string error;
            if (!replay->Run(l, error))
                throw std::runtime_error(l + ": " + error);
        }
    }

    int AddShape(int type, const PointList& pts, const std::string& comment = "[No comment]")
    {
        ShapeRecord r;
        ResetShape(r, type);
        r.gType = static_cast<std::uint8_t>(type);
        r.gComment = comment;
        AppendShape(s().stores, r, pts);
        return s().stores.ShapeCount() - 1;
    }

    int AddObject(int type, int x, int y, double rotation = 0)
    {
        AppendObject(s().stores, type, x, y, rotation, s().programFolder);
        return s().stores.ObjectCount() - 1;
    }

    void SelectShape(int i)
    {
        const auto& l = s().stores.ShapeStore[i].gLimits;
        Sel().addEntry(i, 0, l[0], l[1], l[2], l[3]);
    }

    void SelectObject(int i)
    {
        const auto& o = s().stores.ObjectStore[i];
        Sel().addEntry(i, 1, o.PosX, o.PosX, o.PosY, o.PosY);
    }

    std::vector<std::string> Kinds() const
    {
        std::vector<std::string> k;
        for (const auto& e : replay->ui.log)
            k.push_back(e.kind);
        return k;
    }

    const PointList& Points(int shape) { return s().stores.PointStore.at(shape); }

    std::unique_ptr<ReplaySession> replay;
};

inline std::string ReadFileText(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// Pixel of a world point on the fixture's canvas at zoom 1.
inline std::string Px(int worldX, int worldY)
{
    return std::to_string(worldX + 400) + " " + std::to_string(worldY + 300);
}

// A fresh folder under the system's temporary folder, removed on destruction.
struct TempFolder {
    explicit TempFolder(const std::string& name)
        : path(std::filesystem::temp_directory_path() / ("fw_" + name + "_" + std::to_string(::getpid())))
    {
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
    }
    ~TempFolder() { std::filesystem::remove_all(path); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    std::string operator/(const std::string& name) const { return (path / name).string(); }
    std::filesystem::path path;
};

// Runs a fixture script where it stands, with what it writes going to a scratch folder of its own
// (never beside the script), and keeps the session for the checks.
struct Scenario {
    explicit Scenario(const std::string& script)
        : scratch("editor_scenario_" + script), path((std::filesystem::path(FW_FIXTURES) / "editor" / script).string()),
          replay(std::make_unique<ReplaySession>(FW_PROGRAM_DIR, std::string(FW_FIXTURES) + "/editor", dir.string()))
    {
        std::ostringstream err;
        code = replay->RunFile(path, err);
        errors = err.str();
    }
    const Session& s() const { return replay->session; }
    TempFolder scratch;
    const std::filesystem::path& dir = scratch.path; // the output folder
    std::string path;                                // the script, in the fixtures
    std::unique_ptr<ReplaySession> replay;
    int code = -1;
    std::string errors;
};

} // namespace fw::test
