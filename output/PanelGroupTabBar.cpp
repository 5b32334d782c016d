#include "output/PanelGroupTabBar.h"

PanelGroupTabBar::PanelGroupTabBar(QWidget* parent) : CustomTabBar(parent) {}
