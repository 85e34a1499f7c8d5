#include "ui/DetailPane.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/TranscriptionJob.h"
#include "app/TranscriptionQueue.h"
#include "ui/BusyView.h"
#include "ui/DropZone.h"
#include "ui/Icons.h"
#include "ui/QueueView.h"
#include "ui/Style.h"
#include "ui/TranscribeSetupView.h"
#include "ui/Windows.h"

#include <QAction>
#include <QKeySequence>
#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QToolBar>
#include <QVBoxLayout>

DetailPane::Screen DetailPane::screenFor(bool interviewActive, bool isBusy, bool hasPending, bool hasCurrent,
                                         bool hasQueue)
{
    if (interviewActive)
        return Screen::interview;
    if (isBusy)
        return Screen::busy;
    if (hasPending)
        return Screen::setup;
    if (hasCurrent)
        return Screen::result;
    // The queue's rows stay until they are cleared, also after an item was looked at.
    if (hasQueue)
        return Screen::queue;
    return Screen::drop;
}

DetailPane::Screen DetailPane::screenFor(const AppModel &app)
{
    return screenFor(app.interviewActive(), app.transcription().isBusy(), app.pending().has_value(),
                     app.current().has_value(), !app.queue().rows().isEmpty());
}

DetailPane::DetailPane(AppModel &app, QWidget *parent) : QWidget(parent), m_app(app)
{
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);

    // Placed by the window; hidden until then.
    m_toolbar = new QToolBar(this);
    m_toolbar->hide();
    m_toolbar->setObjectName(QStringLiteral("detail-toolbar"));
    m_toolbar->setMovable(false);
    m_toolbar->setFloatable(false);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toolbar->setIconSize(QSize(18, 18));
    m_toolbar->setContextMenuPolicy(Qt::PreventContextMenu);

    // Navigation.
    m_new = m_toolbar->addAction(QString());
    connect(m_new, &QAction::triggered, &app, [&app] {
        app.setCurrent(std::nullopt);
        app.setPending(std::nullopt);
    });
    m_delete = m_toolbar->addAction(QString());
    connect(m_delete, &QAction::triggered, this, [this] { setShowDeleteConfirm(true); });

    auto *spacer = new QWidget(m_toolbar);
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_toolbar->addWidget(spacer);

    // Primary actions.
    m_interview = m_toolbar->addAction(QString());
    connect(m_interview, &QAction::triggered, &app, &AppModel::stageInterview);
    m_record = m_toolbar->addAction(QString());
    connect(m_record, &QAction::triggered, &app, &AppModel::stageRecording);
    m_open = m_toolbar->addAction(QString());
    m_open->setShortcut(QKeySequence::Open);
    connect(m_open, &QAction::triggered, &app, &AppModel::openPanel);
    m_toolbar->addSeparator();

    // Always there.
    m_settings = m_toolbar->addAction(QString());
    connect(m_settings, &QAction::triggered, &app, [&app] { app.setShowSettings(true); });
    m_help = m_toolbar->addAction(QString());
    connect(m_help, &QAction::triggered, this, &DetailPane::helpRequested);

    for (auto signal : {&AppModel::interviewActiveChanged, &AppModel::pendingChanged, &AppModel::currentChanged})
        connect(&app, signal, this, &DetailPane::refresh);
    connect(&app.transcription(), &TranscriptionJob::isBusyChanged, this, &DetailPane::refresh);
    connect(&app.queue(), &TranscriptionQueue::rowsChanged, this, &DetailPane::refresh);

    retranslate();
    restyle();
    refresh();
}

void DetailPane::refresh()
{
    const Screen screen = screenFor(m_app);
    QString identity;
    if (screen == Screen::setup)
        identity = m_app.pending()->id.toString();
    else if (screen == Screen::result)
        identity = m_app.current()->id;

    updateActions();
    if (m_widget && screen == m_screen && identity == m_identity)
        return;

    // A new screen starts afresh: the old one and its local state go.
    if (m_widget) {
        m_widget->hide();
        m_widget->deleteLater();
    }
    m_screen = screen;
    m_identity = identity;
    switch (screen) {
    case Screen::interview: m_widget = makeInterviewView(m_app, this); break;
    case Screen::busy: m_widget = new BusyView(m_app, this); break;
    case Screen::setup: m_widget = new TranscribeSetupView(m_app, *m_app.pending(), this); break;
    case Screen::result: m_widget = makeResultView(m_app, this); break;
    case Screen::queue: m_widget = new QueueView(m_app, this); break;
    case Screen::drop: m_widget = new DropZone(m_app, this); break;
    }
    layout()->addWidget(m_widget);
    m_widget->show();
}

void DetailPane::updateActions()
{
    const bool busy = m_app.transcription().isBusy();
    m_new->setEnabled(!busy && (m_app.current() || m_app.pending()));
    m_delete->setEnabled(!busy && m_app.current());
    m_interview->setEnabled(!busy);
    m_record->setEnabled(!busy);
    m_open->setEnabled(!busy);
}

void DetailPane::setShowDeleteConfirm(bool show)
{
    if (!show) {
        if (m_confirm)
            m_confirm->done(QMessageBox::Cancel);
        return;
    }
    if (m_confirm)
        return;
    m_confirm = new QMessageBox(window());
    m_confirm->setAttribute(Qt::WA_DeleteOnClose);
    m_confirm->setIcon(QMessageBox::Warning);
    m_confirm->setWindowTitle(Tr::tr("Transkription löschen?"));
    m_confirm->setText(Tr::tr("Transkription löschen?"));
    m_confirm->setInformativeText(
        Tr::tr("Aufnahme und Sagwerk werden dauerhaft entfernt."));
    QPushButton *remove
        = m_confirm->addButton(Tr::tr("Löschen"), QMessageBox::DestructiveRole);
    QPushButton *cancel
        = m_confirm->addButton(Tr::tr("Abbrechen"), QMessageBox::RejectRole);
    m_confirm->setDefaultButton(cancel);
    m_confirm->setEscapeButton(cancel);
    Style::styleAlert(m_confirm);
    connect(m_confirm, &QMessageBox::finished, this, [this, remove] {
        const bool confirmed = m_confirm && m_confirm->clickedButton() == remove;
        m_confirm = nullptr;
        if (confirmed && m_app.current())
            m_app.deleteItem(*m_app.current());
    });
    m_confirm->open();
}

void DetailPane::retranslate()
{
    m_new->setText(Tr::tr("Neu"));
    m_new->setToolTip(Tr::tr("Neue Transkription"));
    m_delete->setText(Tr::tr("Löschen"));
    m_delete->setToolTip(Tr::tr("Diese Transkription löschen"));
    m_interview->setText(Tr::tr("Interview"));
    m_record->setText(Tr::tr("Aufnehmen"));
    m_open->setText(Tr::tr("Datei öffnen"));
    m_settings->setText(Tr::tr("Einstellungen"));
    m_help->setText(Tr::tr("Hilfe"));
}

void DetailPane::restyle()
{
    const QPalette &pal = QApplication::palette();
    m_new->setIcon(Icons::icon(QStringLiteral("square.and.pencil"), pal));
    m_delete->setIcon(Icons::icon(QStringLiteral("trash"), pal));
    m_interview->setIcon(Icons::icon(QStringLiteral("person.2.wave.2"), pal));
    m_record->setIcon(Icons::icon(QStringLiteral("mic.circle"), pal));
    m_open->setIcon(Icons::icon(QStringLiteral("folder"), pal));
    m_settings->setIcon(Icons::icon(QStringLiteral("gearshape"), pal));
    m_help->setIcon(Icons::icon(QStringLiteral("questionmark.circle"), pal));
}

void DetailPane::changeEvent(QEvent *event)
{
    // The toolbar lives in the window's toolbar area, but belongs here.
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    else if (event->type() == QEvent::ApplicationPaletteChange)
        restyle();
    QWidget::changeEvent(event);
}
