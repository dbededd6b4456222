// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

/// A failure with a text for the user. Crosses the library boundary, hence exported; a host that does not know the type
/// still gets the text (UTF-8) from what().
class Q_DECL_EXPORT TPluginError : public std::exception {
public:
    explicit TPluginError(const QString &message) : m_utf8(message.toUtf8()) { }

    const char *what() const noexcept override { return m_utf8.constData(); }
    QString message() const { return QString::fromUtf8(m_utf8); }

private:
    QByteArray m_utf8;
};
