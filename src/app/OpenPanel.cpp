// Opening a file through the desktop's chooser.
#include "app/AppModel.h"

void AppModel::setFilePanel(FilePanel panel)
{
    m_filePanel = std::move(panel);
}

void AppModel::openPanel()
{
    if (!m_filePanel)
        return;
    // A cancelled chooser is no failure: nothing happens.
    if (const std::optional<QString> path = m_filePanel())
        stage(*path);
}
