#include "ui/KeyField.h"
#include "core/Tr.h"

#include "app/AppModel.h"
#include "app/LanguageManager.h"
#include "ui/Icons.h"
#include "ui/Style.h"

#include <QCoreApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

KeyField::KeyField(AppModel &app, AIProvider provider, bool removable, QWidget *parent)
    : QWidget(parent), m_app(app), m_provider(provider)
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);

    auto *row = new QHBoxLayout;
    row->setSpacing(8);
    m_title = new QLabel(this);
    m_title->setObjectName(QStringLiteral("title"));
    m_storedIcon = new QLabel(this);
    m_stored = new QLabel(this);
    m_stored->setObjectName(QStringLiteral("stored"));
    row->addWidget(m_title);
    // The mark and its word sit together, as one label.
    auto *mark = new QHBoxLayout;
    mark->setSpacing(3);
    mark->addWidget(m_storedIcon);
    mark->addWidget(m_stored);
    row->addLayout(mark);
    if (removable) {
        m_remove = new QPushButton(this);
        m_remove->setObjectName(QStringLiteral("remove"));
        m_remove->setAutoDefault(false);
        connect(m_remove, &QPushButton::clicked, this, &KeyField::remove);
        row->addWidget(m_remove);
    }
    row->addStretch(1);
    column->addLayout(row);

    m_field = new QLineEdit(this);
    m_field->setObjectName(QStringLiteral("field"));
    m_field->setEchoMode(QLineEdit::Password);
    // The providers' usual key prefixes; never an example key.
    m_field->setPlaceholderText(provider == AIProvider::anthropic ? QStringLiteral("sk-ant-…")
                                                                  : QStringLiteral("sk-…"));
    column->addWidget(m_field);

    const auto changed = provider == AIProvider::anthropic ? &AppModel::anthropicKeyChanged
                                                           : &AppModel::openaiKeyChanged;
    connect(&app, changed, this, &KeyField::refresh);
    connect(&LanguageManager::instance(), &LanguageManager::languageChanged, this, &KeyField::refresh);
    refresh();
}

QString KeyField::draft() const
{
    return m_field->text();
}

void KeyField::clearDraft()
{
    m_field->clear();
}

void KeyField::saveDraft()
{
    const QString text = draft();
    if (text.isEmpty())
        return;
    if (m_provider == AIProvider::anthropic)
        m_app.saveAnthropicKey(text);
    else
        m_app.saveOpenAIKey(text);
}

bool KeyField::hasStoredKey() const
{
    return !(m_provider == AIProvider::anthropic ? m_app.anthropicKey() : m_app.openaiKey()).isEmpty();
}

void KeyField::remove()
{
    if (m_provider == AIProvider::anthropic)
        m_app.saveAnthropicKey(QString());
    else
        m_app.saveOpenAIKey(QString());
    clearDraft();
}

void KeyField::changeEvent(QEvent *event)
{
    Style::restyleOnLookChange(event, this, &KeyField::refresh);
    QWidget::changeEvent(event);
}

void KeyField::refresh()
{
    m_title->setText(m_provider == AIProvider::anthropic
                         ? Tr::tr("Anthropic API-Key")
                         : Tr::tr("OpenAI API-Key"));
    Style::style(m_title, Style::TextSize::subheadline, Style::Tone::text, QFont::Bold);

    const bool stored = hasStoredKey();
    m_stored->setText(Tr::tr("hinterlegt"));
    Style::style(m_stored, Style::TextSize::caption, Style::Tone::green);
    const int iconSize = QFontMetrics(m_stored->font()).height();
    m_storedIcon->setPixmap(Icons::pixmap(QStringLiteral("checkmark.seal"), iconSize,
                                            Style::color(palette(), Style::Tone::green), devicePixelRatioF()));
    m_stored->setVisible(stored);
    m_storedIcon->setVisible(stored);

    if (m_remove) {
        m_remove->setText(Tr::tr("Entfernen"));
        m_remove->setFont(Style::font(Style::TextSize::caption));
        m_remove->setEnabled(stored);
    }
}
