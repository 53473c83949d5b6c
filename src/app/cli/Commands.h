// The commands of fieldwright-cli; each returns the process's exit code.
#pragma once

#include <string>
#include <vector>

namespace fw::cli {

using Args = std::vector<std::string>;

int Dump(const Args& args);
int Resave(const Args& args);
int Export(const Args& args);
int Compile(const Args& args);
int CheckScasm(const Args& args);
int Replay(const Args& args);
int Render(const Args& args);
int ImportOsm(const Args& args);

int Check(const Args& args);

// The program folder of this executable (FIELDWRIGHT_HOME wins).
std::string ProgramFolder();

} // namespace fw::cli

namespace fw {
class Ui;
struct Session;
namespace cli {
// The project as the Open command leaves it in the session; false (told through ui) when it can't be read.
bool LoadProject(const std::string& path, Session& s, Ui& ui);
// The project read into the session as it is, with no macro read and no selection made.
bool ReadProjectInto(const std::string& path, Session& s, Ui& ui);
} // namespace cli
} // namespace fw
