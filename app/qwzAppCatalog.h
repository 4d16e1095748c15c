// The application's catalog: the one call through which dialogs, menus, prompts and messages are
// translated. Until catalogs are loaded, a text translates to itself.
#pragma once

#include "foundation/utString.h"

// Starts the catalogs of the program's own domain below `catalogBaseDir`.
void qwzStartCatalogs(const utString& catalogBaseDir);

// The program-domain translation of an English text, or the text itself.
utString translate(const char* english);

// translate(), then printf-style formatting of the result.
utString translateFormat(const char* english, ...);
