#pragma once

#include "tabs/CustomTabBar.h"

// The tab strip above the output: the editors' tab bar, as a type of its own.
class PanelGroupTabBar : public CustomTabBar
{
    Q_OBJECT

public:
    explicit PanelGroupTabBar(QWidget* parent = nullptr);
};
