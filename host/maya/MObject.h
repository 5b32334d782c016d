#pragma once

class MObject
{
public:
    MObject() = default;
    bool isNull() const { return handle_ == nullptr; }
    static const MObject kNullObj;

    // Substitute only: the host hands the plug-in a handle that names its plug-in record.
    explicit MObject(void* handle) : handle_(handle) {}
    void* handle() const { return handle_; }

private:
    void* handle_ = nullptr;
};
