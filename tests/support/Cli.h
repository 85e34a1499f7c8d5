#pragma once

#include "LocalServer.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <signal.h>

struct CliRun {
    int status = -1;
    QByteArray out, err;
};

// Runs sagwerk-cli while this process's event loop keeps serving the local servers;
// sends it Ctrl-C once `interruptWhen` holds.
inline CliRun cli(const QStringList &args, const std::function<bool()> &interruptWhen = {},
                  const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment())
{
    QProcess p;
    p.setProcessEnvironment(environment);
    p.start(QStringLiteral(SAGWERK_CLI), args);
    EXPECT_TRUE(p.waitForStarted());
    if (interruptWhen) {
        EXPECT_TRUE(waitFor(interruptWhen));
        ::kill(pid_t(p.processId()), SIGINT);
    }
    EXPECT_TRUE(waitFor([&] { return p.state() == QProcess::NotRunning; }, 300'000));
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, p.readAllStandardOutput(),
            p.readAllStandardError()};
}
