#pragma once
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <vector>

OPENMAYA_MAJOR_NAMESPACE_OPEN

class MStringArray
{
public:
    MStringArray();
    MStringArray(unsigned int initialSize, const MString& initialValue);
    MStringArray(const MString* strings, unsigned int count);

    const MString& operator[](unsigned int index) const;
    MString& operator[](unsigned int index);
    MStatus set(const MString& element, unsigned int index);
    MStatus setLength(unsigned int length);
    unsigned int length() const;
    MStatus remove(unsigned int index);
    MStatus insert(const MString& element, unsigned int index);
    MStatus append(const MString& element);
    MStatus clear();

private:
    std::vector<MString> items_;
};

OPENMAYA_MAJOR_NAMESPACE_CLOSE
