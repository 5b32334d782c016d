#pragma once

// What a buffer is backed by. The values are stored with the open tabs and must not change.
enum class CodeEditorType : int
{
    INTERNAL_BUFFER = 0, // a file in the internal buffer folder; saving it asks for a path first
    FILE = 1,            // a file of the user's, watched for changes made outside
};
