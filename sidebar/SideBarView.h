#pragma once

// The views of the side bar, by their index in its stack.
enum SideBarView
{
    SideBarViewExplorer = 0,
    SideBarViewSearch = 1,
    SideBarViewQuickHelp = 2
};
