// The command header as it should be: the API header included, no declaration of its own.
#include <maya/MArgDatabase.h>
#include <maya/MPxCommand.h>

class Command : public MPxCommand
{
public:
    MStatus OpenFile(const MArgDatabase& database);
};

MStatus Command::OpenFile(const MArgDatabase& database)
{
    return database.isFlagSet("-of") ? MStatus::kSuccess : MStatus::kFailure;
}
