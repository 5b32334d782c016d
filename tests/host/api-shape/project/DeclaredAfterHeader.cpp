// A forward declaration after an API header: the using-declaration is in scope already.
#include <maya/MPxCommand.h>

class MArgDatabase;

class Command : public MPxCommand
{
public:
    MStatus OpenFile(const MArgDatabase& database);
};

#include <maya/MArgDatabase.h>

MStatus Command::OpenFile(const MArgDatabase& database)
{
    return database.isFlagSet("-of") ? MStatus::kSuccess : MStatus::kFailure;
}
