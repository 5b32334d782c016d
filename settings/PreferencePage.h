#pragma once

// The page of the preferences dialog, by its row in the dialog's list. A value outside 0 to 8
// asks for no particular page.
enum PreferencePage
{
    GENERAL_PAGE = 0,
    KEYBOARD_PAGE = 1,
    TABS_PAGE = 2,
    FONTS_AND_COLORS_PAGE = 3,
    CODE_EDITOR_PAGE = 4,
    OUTPUT_PAGE = 5,
    MEL_PAGE = 6,
    PYTHON_PAGE = 7,
    PYLINT_PAGE = 8
};
