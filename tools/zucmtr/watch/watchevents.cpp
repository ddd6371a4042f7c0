#include "zucmtr/watch/watchevents.h"

#include "zucmtr/files/systemfile.h"
#include "zucmtr/terminal/console.h"
#include "zucmtr/watch/eventtext.h"

#include <QDateTime>

#include <sys/mman.h>
#include <unistd.h>

namespace watchevents {

namespace {

Output& Current()
{
    static Output output;
    return output;
}

// A file without a name that whoever prints a line has locked. The lock belongs to the process, so it ends
// with it.
systemfile::Descriptor& Turn()
{
    static systemfile::Descriptor turn;
    return turn;
}

class MyTurn
{
public:
    MyTurn() : isTaken(Turn().IsOpen() && lockf(Turn().Number(), F_LOCK, 0) == 0) {}
    ~MyTurn()
    {
        if (isTaken && lockf(Turn().Number(), F_ULOCK, 0) != 0)
            Turn() = systemfile::Descriptor(); // closing it unlocks it
    }
    MyTurn(const MyTurn&) = delete;
    MyTurn& operator=(const MyTurn&) = delete;

private:
    const bool isTaken;
};

} // namespace

void Use(const Output& output)
{
    Current() = output;
}

void Name(const QString& recorder)
{
    Current().recorder = recorder;
}

const Output& Used()
{
    return Current();
}

void ShareLines()
{
    Turn() = systemfile::Descriptor(memfd_create("zucmtr-lines", MFD_CLOEXEC));
}

void Emit(const char* event, QJsonObject object)
{
    const Output& output = Current();
    const QDateTime now = QDateTime::currentDateTime();
    object["time"] = now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODateWithMs);
    object["event"] = QLatin1String(event);
    if (!output.recorder.isEmpty())
        object["recorder"] = output.recorder;
    const MyTurn turn;
    if (output.form == Form::Json) {
        PrintJson(object);
        return;
    }
    const QString line = WithoutControls(eventtext::LineOf(object));
    PrintLine(line);
    if (output.log)
        output.log(line);
}

} // namespace watchevents
