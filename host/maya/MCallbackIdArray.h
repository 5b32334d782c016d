#pragma once
#include <maya/MStatus.h>
#include <maya/MMessage.h>
#include <vector>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MCallbackIdArray
{
public:
    MCallbackIdArray() = default;
    MCallbackId operator[](unsigned int index) const;
    MCallbackId& operator[](unsigned int index);
    MStatus append(MCallbackId id);
    MStatus remove(unsigned int index);
    MStatus clear();
    MStatus setLength(unsigned int length);
    unsigned int length() const;

private:
    std::vector<MCallbackId> ids_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
