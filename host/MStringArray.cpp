#include <maya/MStringArray.h>

namespace
{
// What an out-of-range index refers to: Maya does not check, the substitute must not crash.
MString& OutOfRange()
{
    static MString dummy;
    dummy.clear();
    return dummy;
}
} // namespace

MStringArray::MStringArray() = default;

MStringArray::MStringArray(unsigned int initialSize, const MString& initialValue)
    : items_(initialSize, initialValue)
{
}

MStringArray::MStringArray(const MString* strings, unsigned int count)
{
    if (strings)
        items_.assign(strings, strings + count);
}

const MString& MStringArray::operator[](unsigned int index) const
{
    return index < items_.size() ? items_[index] : OutOfRange();
}

MString& MStringArray::operator[](unsigned int index)
{
    return index < items_.size() ? items_[index] : OutOfRange();
}

// Grows the array as Maya's set does.
MStatus MStringArray::set(const MString& element, unsigned int index)
{
    if (index >= items_.size())
        items_.resize(static_cast<size_t>(index) + 1);
    items_[index] = element;
    return MStatus::kSuccess;
}

MStatus MStringArray::setLength(unsigned int length)
{
    items_.resize(length);
    return MStatus::kSuccess;
}

unsigned int MStringArray::length() const
{
    return static_cast<unsigned int>(items_.size());
}

MStatus MStringArray::remove(unsigned int index)
{
    if (index >= items_.size())
        return MStatus::kInvalidParameter;
    items_.erase(items_.begin() + index);
    return MStatus::kSuccess;
}

MStatus MStringArray::insert(const MString& element, unsigned int index)
{
    if (index > items_.size())
        return MStatus::kInvalidParameter;
    items_.insert(items_.begin() + index, element);
    return MStatus::kSuccess;
}

MStatus MStringArray::append(const MString& element)
{
    items_.push_back(element);
    return MStatus::kSuccess;
}

MStatus MStringArray::clear()
{
    items_.clear();
    return MStatus::kSuccess;
}
