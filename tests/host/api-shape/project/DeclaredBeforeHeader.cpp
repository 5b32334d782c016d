// A forward declaration before any API header, as a header included first would make it.
class MArgDatabase;

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
