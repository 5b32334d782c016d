#pragma once

#include <QtCore/QMetaType>

// Where a dragged tab or file lands on an editor group: on the whole group, or on one half of it
// along the groups' layout axis, which splits the view. The values travel in signals.
enum TabDropZone
{
    TabDropZoneCenter = 0,
    TabDropZoneBefore = 1,
    TabDropZoneAfter = 2,
    TabDropZoneNone = 3,
};

Q_DECLARE_METATYPE(TabDropZone)
