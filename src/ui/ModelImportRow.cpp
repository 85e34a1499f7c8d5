#include "ui/ModelImportRow.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/ModelImportJob.h"
#include "ui/Icons.h"
#include "ui/Style.h"

#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QToolButton>
#include <QVBoxLayout>

ModelImportRow::ModelImportRow(AppModel &app, QWidget *parent) : QWidget(parent)
{
    m_job = new ModelImportJob(*app.modelStore(), this);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    auto *row = new QHBoxLayout;
    row->setSpacing(8);
    m_button = new QToolButton(this);
    m_button->setObjectName(QStringLiteral("importModel"));
    m_button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_button->setPopupMode(QToolButton::InstantPopup);
    m_button->setIcon(Icons::themed(QStringLiteral("document-import")));
    m_button->setMenu(new QMenu(m_button));
    m_progress = new QProgressBar(this);
    m_progress->setRange(0, 1000);
    m_progress->setTextVisible(false);
    m_progress->setMaximumHeight(8);
    m_progress->hide();
    row->addWidget(m_button);
    row->addWidget(m_progress, 1);
    row->addStretch(0);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("importStatus"));
    m_status->setWordWrap(true);
    m_status->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_status->setFont(Style::font(Style::TextSize::caption));
    m_status->hide();
    column->addLayout(row);
    column->addWidget(m_status);

    connect(m_job, &ModelImportJob::progress, this, [this](double f) { m_progress->setValue(int(f * 1000)); });
    connect(m_job, &ModelImportJob::finished, this, [this](bool ok, const QString &message) {
        m_progress->hide();
        m_button->setEnabled(true);
        m_status->setText(message);
        Style::setTone(m_status, ok ? Style::Tone::secondary : Style::Tone::orange);
        m_status->show();
    });
    retranslate();
}

void ModelImportRow::choose(bool folder)
{
    // Not modal in the event loop's sense: the dialog reports when the user is done.
    auto *dialog = new QFileDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setDirectory(QDir::homePath());
    dialog->setFileMode(folder ? QFileDialog::Directory : QFileDialog::ExistingFile);
    if (!folder)
        dialog->setNameFilters({Tr::tr("Whisper-Modelle (*.bin)"), Tr::tr("Alle Dateien (*)")});
    connect(dialog, &QFileDialog::fileSelected, this, &ModelImportRow::importFrom);
    dialog->open();
}

void ModelImportRow::importFrom(const QString &source)
{
    if (source.isEmpty() || m_job->isRunning())
        return;
    m_status->hide();
    m_progress->setValue(0);
    m_progress->show();
    m_button->setEnabled(false);
    m_job->start(source);
}

void ModelImportRow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void ModelImportRow::retranslate()
{
    m_button->setText(Tr::tr("Modell importieren"));
    m_button->setToolTip(Tr::tr("Ein Whisper-Modell von der Festplatte übernehmen: eine whisper.cpp-Datei oder einen "
                                "CTranslate2-Modellordner"));
    QMenu *menu = m_button->menu();
    menu->clear();
    menu->addAction(Tr::tr("Modelldatei…"), this, [this] { choose(false); });
    menu->addAction(Tr::tr("Modellordner (CTranslate2)…"), this, [this] { choose(true); });
}
