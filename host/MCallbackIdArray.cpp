#include <maya/MCallbackIdArray.h>

MCallbackId MCallbackIdArray::operator[](unsigned int index) const
{
    return index < ids_.size() ? ids_[index] : 0;
}

// An out-of-range write lands in a scratch value: Maya does not check, the substitute must not crash.
MCallbackId& MCallbackIdArray::operator[](unsigned int index)
{
    static MCallbackId scratch = 0;
    scratch = 0;
    return index < ids_.size() ? ids_[index] : scratch;
}

MStatus MCallbackIdArray::append(MCallbackId id)
{
    ids_.push_back(id);
    return MStatus::kSuccess;
}

MStatus MCallbackIdArray::remove(unsigned int index)
{
    if (index >= ids_.size())
        return MStatus::kInvalidParameter;
    ids_.erase(ids_.begin() + index);
    return MStatus::kSuccess;
}

MStatus MCallbackIdArray::clear()
{
    ids_.clear();
    return MStatus::kSuccess;
}

MStatus MCallbackIdArray::setLength(unsigned int length)
{
    ids_.resize(length, 0);
    return MStatus::kSuccess;
}

unsigned int MCallbackIdArray::length() const
{
    return static_cast<unsigned int>(ids_.size());
}
