#pragma once

// The kind of a row of the workspace tree; its value is the row's QTreeWidgetItem type.
enum WorkspaceItemType
{
    WorkspaceItemFolder = 0,
    WorkspaceItemFile = 1,
    WorkspaceItemPlaceholder = 2
};
