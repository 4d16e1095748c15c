// Resource ids that are not string-table entries: icons, menus, dialogs and their controls.
#pragma once

#define IDI_QUILLON 128
