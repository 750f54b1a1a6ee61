// Folders of the running program: its own folder and the per-user folder for its data.
#pragma once

#include "CString.h"

// The folder of the running executable, closed by "/".
CString GetModuleFolder();

// The program's data folder, $XDG_STATE_HOME/Tessaroline (default ~/.local/state/Tessaroline),
// closed by "/"; made with its parents when missing. Falls back to the executable's folder.
CString GetAppDataFolder();
