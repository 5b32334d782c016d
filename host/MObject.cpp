#include <maya/MObject.h>

const MObject MObject::kNullObj;
