#pragma once

#include <QObject>

namespace Cli {

// A command that waits for its work on the application's event loop. Ctrl-C and SIGTERM
// reach interrupted() on the main thread, so that the work is cancelled cleanly.
class Run : public QObject {
public:
    Run();

protected:
    virtual void interrupted() = 0;
    // The first call ends the event loop with `status`; later ones, and an interrupt
    // after it, do nothing.
    void end(int status);
    bool hasEnded() const { return m_ended; }

private:
    bool m_ended = false;
};

} // namespace Cli
