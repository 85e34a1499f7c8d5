#pragma once

#include <QString>
#include <QStringView>

// Names for the files a job keeps in the system's temporary folder while it runs: a
// download, the decoded audio. They are "sagwerk-<pid>-<uuid><suffix>", so that files left
// by a process that was killed can be told from those of one still running; the first name
// handed out in a process removes the former.
namespace TemporaryFiles {

QString newPath(QStringView suffix);

// Removes what processes no longer running left. Runs by itself before the first newPath().
void removeLeftovers();

} // namespace TemporaryFiles
