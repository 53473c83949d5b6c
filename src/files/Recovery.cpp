#include "files/Recovery.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <system_error>

#include "core/Helpers.h"
#include "files/ProjectFile.h"
#include "files/TextFile.h"
#include "ports/Ui.h"

namespace fw {

namespace fs = std::filesystem;

namespace {

constexpr const char* kCopyExtension = ".fwt";
constexpr const char* kNoteExtension = ".note";

// A name for the copy of each project path: a 64-bit FNV-1a of the path.
std::string CopyName(const std::string& key)
{
    if (key.empty())
        return "unnamed";
    std::uint64_t h = 14695981039346656037ull;
    for (unsigned char c : key) {
        h ^= c;
        h *= 1099511628211ull;
    }
    char name[24];
    std::snprintf(name, sizeof name, "p%016llx", static_cast<unsigned long long>(h));
    return name;
}

std::string LocalTimeNow()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &local);
    return text;
}

RecoveryCopy CopyFor(const std::string& folder, const std::string& key)
{
    const std::string base = folder + CopyName(key);
    return {key, key, {}, base + kCopyExtension, base + kNoteExtension};
}

// The note: the original path on the first line, the time on the second.
bool ReadNote(RecoveryCopy& copy)
{
    std::string text;
    if (!ReadWholeFile(copy.notePath, text))
        return false;
    std::vector<std::string> lines;
    ForEachLine(text, [&lines](std::string_view line) { lines.emplace_back(line); });
    if (lines.size() < 2 || lines[0].rfind("path=", 0) != 0 || lines[1].rfind("time=", 0) != 0)
        return false;
    copy.original = lines[0].substr(5);
    copy.key = copy.original;
    copy.time = lines[1].substr(5);
    return true;
}

// One message, then the keeper is off for the session; editing goes on.
void TurnOff(Session& s, const std::string& why)
{
    const std::string folder = s.recovery.folder;
    s.recovery.folder.clear();
    if (s.ui != nullptr)
        s.ui->Message("Fieldwright can't keep recovery copies of your work in\n" + folder + "\n(" + why +
                          ").\nEditing goes on; save your work as usual.",
                      MessageStyle::Information, "Recovery copies");
}

void DropOld(const std::string& folder)
{
    std::error_code ec;
    const auto limit = fs::file_time_type::clock::now() - std::chrono::hours(24 * kRecoveryDays);
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path p = it->path();
        if (!it->is_regular_file(ec) || p.extension() != kNoteExtension)
            continue;
        if (it->last_write_time(ec) < limit && !ec) {
            fs::path copy = p;
            copy.replace_extension(kCopyExtension);
            fs::remove(copy, ec);
            fs::remove(p, ec);
        }
    }
}

// Equal doubles that are written apart (0 and -0) make records differ; a NaN differs from itself,
// which only costs the text that then decides.
bool SameBits(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

bool SameRecord(const ShapeRecord& a, const ShapeRecord& b)
{
    return a == b && SameBits(a.gLineWidth, b.gLineWidth) && SameBits(a.mBandHeight, b.mBandHeight);
}

bool SameRecord(const ObjectRecord& a, const ObjectRecord& b)
{
    return a == b && SameBits(a.Rotation, b.Rotation) &&
           std::ranges::equal(a.doubles, b.doubles, SameBits);
}

bool SameRecord(const ProjectRecord& a, const ProjectRecord& b)
{
    return a == b && SameBits(a.MagVar, b.MagVar) && SameBits(a.Altitude, b.Altitude) &&
           SameBits(a.LatitudeDegree, b.LatitudeDegree) && SameBits(a.LongitudeDegree, b.LongitudeDegree) &&
           SameBits(a.PolyScale, b.PolyScale) && SameBits(a.LineScale, b.LineScale) &&
           SameBits(a.DotLineScale, b.DotLineScale);
}

bool SameRecord(const ShowFlagsRecord& a, const ShowFlagsRecord& b)
{
    return a == b && SameBits(a.BackImagescale, b.BackImagescale);
}

template <class Record>
bool SameRecords(const std::vector<Record>& a, const std::vector<Record>& b)
{
    return std::ranges::equal(a, b, [](const Record& x, const Record& y) { return SameRecord(x, y); });
}

// True only when the project text can't have changed since the keeper last saw the project: every
// record it is written from is the same, whatever changed it (marked or not).
bool UnchangedSinceSeen(const Session& s)
{
    const RecoveryState& r = s.recovery;
    return r.seenValid && s.stores.PointStore == r.seen.PointStore && SameRecord(s.showFlags, r.seenFlags) &&
           SameRecord(s.project, r.seenProject) && SameRecords(s.stores.ShapeStore, r.seen.ShapeStore) &&
           SameRecords(s.stores.ObjectStore, r.seen.ObjectStore);
}

void NoteSeen(Session& s)
{
    RecoveryState& r = s.recovery;
    r.seenFlags = s.showFlags;
    r.seenProject = s.project;
    r.seen.PointStore = s.stores.PointStore;
    r.seen.ShapeStore = s.stores.ShapeStore;
    r.seen.ObjectStore = s.stores.ObjectStore;
    r.seenValid = true;
}

std::string TextOfSeen(const RecoveryState& r)
{
    const Stores& seen = r.seen;
    return ProjectText({1, r.seenFlags, r.seenProject, seen.PointStore, seen.ShapeStore, seen.ObjectStore});
}

} // namespace

void StartRecovery(Session& s, const std::string& folder)
{
    s.recovery = RecoveryState{};
    if (folder.empty())
        return;
    s.recovery.folder = AddBackslash(folder);
    std::error_code ec;
    fs::create_directories(s.recovery.folder, ec);
    if (ec || !fs::is_directory(s.recovery.folder, ec)) {
        TurnOff(s, ec ? ec.message() : "not a folder");
        return;
    }
    DropOld(s.recovery.folder);
    NoteRecoveryBaseline(s);
}

bool RecoveryOn(const Session& s) { return !s.recovery.folder.empty(); }

std::string ProjectTextOf(const Session& s)
{
    return ProjectText(ProjectViewOf(s));
}

const std::string& RecoveryBaseline(Session& s)
{
    RecoveryState& r = s.recovery;
    if (r.baselineOfSeen) {
        r.baseline = TextOfSeen(r);
        r.baselineOfSeen = false;
    }
    return r.baseline;
}

std::string RecoveryKey(const Session& s) { return s.hasName != 0 ? s.projectPath : std::string(); }

void NoteRecoveryBaseline(Session& s)
{
    if (!RecoveryOn(s))
        return;
    // The text is made only when a later look finds the project changed.
    NoteRecoveryBaseline(s, std::string());
    NoteSeen(s);
    s.recovery.baselineOfSeen = true;
}

void NoteRecoveryBaseline(Session& s, std::string text)
{
    RecoveryState& r = s.recovery;
    r.baselineKey = RecoveryKey(s);
    r.baseline = std::move(text);
    r.baselineKnown = true;
    r.baselineOfSeen = false;
    r.seenValid = false;
    r.written.clear();
}

void KeepRecovery(Session& s)
{
    RecoveryState& r = s.recovery;
    if (!RecoveryOn(s))
        return;
    const std::string key = RecoveryKey(s);
    if (!r.baselineKnown || r.baselineKey != key) {
        // A project whose file content isn't known here: every change is kept.
        NoteRecoveryBaseline(s, std::string());
    }
    // The last look left the copy as this project needs it.
    if (UnchangedSinceSeen(s))
        return;
    RecoveryBaseline(s);
    std::string text = ProjectTextOf(s);
    NoteSeen(s);
    const RecoveryCopy copy = CopyFor(r.folder, key);
    if (text == r.baseline) {
        // Only a copy of this session's own changes; one left by an earlier session waits for
        // its question when the project is opened.
        if (!r.written.empty())
            DropRecoveryCopy(copy);
        r.written.clear();
        return;
    }
    if (text == r.written)
        return;
    const std::string note = "path=" + key + "\r\ntime=" + LocalTimeNow() + "\r\n";
    // The copy first, then its note: a note always has its copy. Each is renamed into place whole;
    // the disk's own write-back is not waited for, which would hold up the window.
    if (!WriteTextReplacing(copy.copyPath, text, false) || !WriteTextReplacing(copy.notePath, note, false)) {
        TurnOff(s, "it can't be written");
        return;
    }
    r.written = std::move(text);
}

void DropRecovery(Session& s)
{
    if (!RecoveryOn(s))
        return;
    DropRecoveryCopy(CopyFor(s.recovery.folder, RecoveryKey(s)));
    s.recovery.written.clear();
    s.recovery.seenValid = false;
}

std::optional<RecoveryCopy> FindRecoveryCopy(const Session& s, const std::string& key)
{
    if (!RecoveryOn(s))
        return std::nullopt;
    RecoveryCopy copy = CopyFor(s.recovery.folder, key);
    std::error_code ec;
    if (!fs::is_regular_file(copy.copyPath, ec) || !ReadNote(copy) || copy.key != key)
        return std::nullopt;
    return copy;
}

std::vector<RecoveryCopy> RecoveryCopies(const Session& s)
{
    std::vector<RecoveryCopy> out;
    if (!RecoveryOn(s))
        return out;
    std::error_code ec;
    for (fs::directory_iterator it(s.recovery.folder, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path p = it->path();
        if (!it->is_regular_file(ec) || p.extension() != kNoteExtension)
            continue;
        RecoveryCopy copy;
        copy.notePath = p.string();
        fs::path c = p;
        c.replace_extension(kCopyExtension);
        copy.copyPath = c.string();
        if (ReadNote(copy) && fs::is_regular_file(copy.copyPath, ec))
            out.push_back(copy);
    }
    return out;
}

void DropRecoveryCopy(const RecoveryCopy& copy)
{
    std::error_code ec;
    fs::remove(copy.notePath, ec);
    fs::remove(copy.copyPath, ec);
}

bool RecoveryDiffers(const RecoveryCopy& copy, const std::string& fileText)
{
    std::string text;
    return ReadWholeFile(copy.copyPath, text) && text != fileText;
}

std::string RestoreQuestion(const RecoveryCopy& copy)
{
    const std::string name = copy.key.empty() ? "an unsaved project" : "'" + copy.original + "'";
    return "Fieldwright kept changes to " + name + " that were not saved (" + copy.time +
           ").\n\nRestore them?";
}

} // namespace fw
