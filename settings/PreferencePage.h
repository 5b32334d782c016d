#pragma once

// A page of the preferences dialog; the value is its row in the page list.
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
    PYLINT_PAGE = 8,
};
