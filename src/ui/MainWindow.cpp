#include "ui/MainWindow.h"
#include "core/Tr.h"

#include "ui/ContentView.h"
#include "ui/DetailPane.h"

#include <QApplication>
#include <QEvent>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

MainWindow::MainWindow(AppModel &app, QWidget *parent) : QMainWindow(parent)
{
    setWindowTitle(QStringLiteral("Sagwerk"));
    setUnifiedTitleAndToolBarOnMac(true);
    m_content = new ContentView(app, this);
    setCentralWidget(m_content);
    addToolBar(Qt::TopToolBarArea, m_content->detailPane()->toolbar());
    m_content->detailPane()->toolbar()->show();
    connect(m_content->detailPane(), &DetailPane::helpRequested, this, &MainWindow::helpRequested);

    m_fileMenu = menuBar()->addMenu(QString());
    // The toolbar's own action, so that its Ctrl+O and its disabled state hold here too.
    m_fileMenu->addAction(m_content->detailPane()->openAction());
    m_fileMenu->addSeparator();
    m_quit = m_fileMenu->addAction(QString());
    // Ctrl+Q even where the platform's key scheme has no quit key of its own.
    QList<QKeySequence> quitKeys = QKeySequence::keyBindings(QKeySequence::Quit);
    if (!quitKeys.contains(QKeySequence(Qt::CTRL | Qt::Key_Q)))
        quitKeys.prepend(QKeySequence(Qt::CTRL | Qt::Key_Q));
    m_quit->setShortcuts(quitKeys);
    m_quit->setMenuRole(QAction::QuitRole);
    connect(m_quit, &QAction::triggered, qApp, &QApplication::closeAllWindows);

    m_helpMenu = menuBar()->addMenu(QString());
    m_help = m_helpMenu->addAction(QString());
    // F1 first, so that the menu shows the key every Linux desktop uses for help; Ctrl+?
    // as a second way. Named outright: the desktop's key scheme may have no help key.
    m_help->setShortcuts({QKeySequence(Qt::Key_F1), QKeySequence(Qt::CTRL | Qt::Key_Question)});
    connect(m_help, &QAction::triggered, this, &MainWindow::helpRequested);
    m_helpMenu->addSeparator();
    m_about = m_helpMenu->addAction(QString());
    m_about->setMenuRole(QAction::AboutRole);
    connect(m_about, &QAction::triggered, this, &MainWindow::aboutRequested);

    resize(1100, 720);
    retranslate();
}

void MainWindow::retranslate()
{
    m_fileMenu->setTitle(Tr::tr("Datei"));
    m_quit->setText(Tr::tr("Beenden"));
    m_helpMenu->setTitle(Tr::tr("Hilfe"));
    m_help->setText(Tr::tr("Sagwerk-Hilfe"));
    m_about->setText(Tr::tr("Über Morvane…"));
}

void MainWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QMainWindow::changeEvent(event);
}
