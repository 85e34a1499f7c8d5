#pragma once

#include "core/UserError.h"

#include <QString>

// The failures of decoding and recognition. `errorDescription` is the text the user sees.
class EngineError : public UserError {
public:
    enum class Case { convertFailed, transcribeFailed, noModel, cancelled };

    static EngineError convertFailed(const QString &message, const QString &details = {})
    {
        return {Case::convertFailed, message, details};
    }
    static EngineError transcribeFailed(const QString &message) { return {Case::transcribeFailed, message}; }
    static EngineError noModel() { return {Case::noModel, {}}; }
    static EngineError cancelled() { return {Case::cancelled, {}}; }

    Case kind() const { return m_case; }
    const QString &message() const { return m_message; }
    bool isCancelled() const override { return m_case == Case::cancelled; }

    QString errorDescription() const override;
    QString details() const override { return m_details; }

private:
    EngineError(Case c, QString message, QString details = {})
        : m_case(c), m_message(std::move(message)), m_details(std::move(details))
    {
    }

    Case m_case;
    QString m_message;
    QString m_details;
};
