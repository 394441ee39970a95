// What the program keeps between runs, how it starts and how it ends.
#pragma once

#include "core/store.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vael {

/// Name of the parameter file in the program's folder.
inline constexpr const char* SYSTEM_FILE = "syspara_a.xpr";

/// Blocks 1 to 6 of `syspara_a.xpr` into `param`, the colour table, the display block and the
/// settings. -1 on success; 0 when anything failed, silently, with nothing changed.
std::int16_t ReadSystemPara(const std::string& path, ParamRecord& param);
/// The mirror. -1 on success.
std::int16_t WriteSystemPara(const std::string& path, const ParamRecord& param);

/// The six lines of `VaelAna.ini`. A value that is no number gives all five settings their defaults
/// at that point, and later lines can still override; any file error gives all defaults.
void ReadIni(const std::string& path);
std::int16_t WriteIni(const std::string& path);

/// `EACPS`, `ISPPK`, `Lambda`, `JudgeRange` and `SmoothingOn` to their defaults.
void SetDefault();

/// The prompt about rows whose data are not saved: -1 when the user keeps them, 0 otherwise. Yes
/// means that the data may go and the command continues.
[[nodiscard]] std::int16_t CheckNoSave();

/// Starts the program on its desk: faults go to the status line and the log, the main view loads,
/// and the files, if any, are opened (`OpenNamed`).
void StartProgram(const std::string& programFolder, const std::vector<std::string>& files = {});

/// The main view's load, with the folder that holds the program's files (no closing separator).
void Form_Load(const std::string& programFolder);
/// The second entry of start-up: the same with an empty store, without the ini file and without a
/// prompt. All graphs are gone afterwards.
void Form_Load_Proc();
/// The orderly end: asks, unloads the kept views, writes both files and quits the desk.
void ExitProc();

}  // namespace vael
