#pragma once

#include "core/UserError.h"

#include <QString>

// The failures of a speaker separation. `errorDescription` is the text the user sees.
class DiarizerError : public UserError {
public:
    enum class Case { failed, cliNotFound, cancelled };

    static DiarizerError failed(const QString &detail) { return {Case::failed, detail}; }
    static DiarizerError cliNotFound() { return {Case::cliNotFound, {}}; }
    static DiarizerError cancelled() { return {Case::cancelled, {}}; }

    Case kind() const { return m_case; }
    const QString &detail() const { return m_detail; }
    bool isCancelled() const override { return m_case == Case::cancelled; }

    QString errorDescription() const override;

private:
    DiarizerError(Case c, QString detail) : m_case(c), m_detail(std::move(detail)) {}

    Case m_case;
    QString m_detail;
};
