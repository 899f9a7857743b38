// The front's result codes. A code's numeric value is the process's exit
// status when the front fails; APP_RESULT_OK is never an exit status, since on
// success the framework does not return.

#ifndef VOSK_FRONT_APP_RESULT_H
#define VOSK_FRONT_APP_RESULT_H

#include <string>

namespace voskoamupgrader {

// A fixed underlying type, so that any int (a code from elsewhere, a future
// code) is a valid value and decodes without undefined behaviour.
enum AppResult : int {
  APP_RESULT_OK = 0,
  APP_RESULT_NO_WPK_ROOT = 1,
  APP_RESULT_FAILED_TO_FIND_MODS = 2,
  APP_RESULT_FAILED_TO_OPEN_APPDATA_FILE = 3,
  APP_RESULT_FAILED_TO_PARSE_APPDATA_FILE = 4,
  APP_RESULT_FAILED_TO_FIND_IMM_FILE = 5,
  APP_RESULT_FAILED_TO_PARSE_IMM_FILE_NAME = 6,
};

// The code's name, e.g. "APP_RESULT_NO_WPK_ROOT"; "NOT_DECODED (<value>)" for
// a value without a name.
std::string appResultToString(AppResult result);

}  // namespace voskoamupgrader

#endif
