#include "ui/SagwerkApp.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/LanguageManager.h"
#include "app/MediaTypes.h"
#include "ui/Icons.h"
#include "ui/MainWindow.h"
#include "ui/Windows.h"

#include <QApplication>
#include <QFileDialog>
#include <QLayout>
#include <QShortcut>

namespace {

// The desktop's file chooser for audio and video files, one or several.
QStringList chooseMediaFiles(QWidget *parent)
{
    const QString filter = Tr::tr("Audio- und Videodateien") + QStringLiteral(" (")
        + MediaTypes::patterns().join(u' ') + u')';
    return QFileDialog::getOpenFileNames(parent, Tr::tr("Datei öffnen"), QString(), filter, nullptr,
                                         QFileDialog::HideNameFilterDetails);
}

} // namespace

SagwerkApp::SagwerkApp(QObject *parent) : QObject(parent)
{
    Icons::useIconTheme();
    m_model = std::make_unique<AppModel>();
    m_main = new MainWindow(*m_model);
    m_main->setAttribute(Qt::WA_DeleteOnClose, false);
    m_model->setFilePanel([this] { return chooseMediaFiles(m_main); });
    connect(m_main, &MainWindow::aboutRequested, this, [this] { openWindow(QStringLiteral("about")); });
    connect(m_main, &MainWindow::helpRequested, this, [this] { openWindow(QStringLiteral("help")); });
    connect(&LanguageManager::instance(), &LanguageManager::languageChanged, this, [this] {
        applyLocale();
        retranslate();
    });
    applyLocale();
}

SagwerkApp::~SagwerkApp()
{
    // The windows go before the state they show.
    delete m_about;
    delete m_help;
    delete m_main;
}

QWidget *SagwerkApp::window(const QString &id) const
{
    if (id == QLatin1String("about"))
        return m_about;
    if (id == QLatin1String("help"))
        return m_help;
    return nullptr;
}

void SagwerkApp::openWindow(const QString &id)
{
    const bool about = id == QLatin1String("about");
    QPointer<QWidget> &slot = about ? m_about : m_help;
    if (!slot) {
        QWidget *window = about ? makeAboutView(*m_model, nullptr) : makeHelpView(*m_model, nullptr);
        window->setWindowFlag(Qt::Window);
        window->setObjectName(id);
        window->setAttribute(Qt::WA_DeleteOnClose, false);
        window->setLocale(LanguageManager::instance().appLocale());
        // Escape closes either window, as it would a dialog.
        auto *close = new QShortcut(QKeySequence::Cancel, window);
        connect(close, &QShortcut::activated, window, &QWidget::close);
        if (about) {
            // Takes the size of its content and keeps it.
            if (window->layout())
                window->layout()->setSizeConstraint(QLayout::SetFixedSize);
            else
                window->setFixedSize(window->sizeHint());
        } else {
            window->resize(760, 620);
        }
        slot = window;
        retranslate();
    }
    slot->show();
    slot->raise();
    slot->activateWindow();
}

void SagwerkApp::retranslate()
{
    if (m_about)
        m_about->setWindowTitle(Tr::tr("Über Morvane"));
    if (m_help)
        m_help->setWindowTitle(Tr::tr("Hilfe"));
}

void SagwerkApp::applyLocale()
{
    const QLocale locale = LanguageManager::instance().appLocale();
    for (QWidget *window : {static_cast<QWidget *>(m_main), m_about.data(), m_help.data()}) {
        if (window)
            window->setLocale(locale);
    }
}
