// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <QtGlobal>

namespace Workbench {

/// Collects what plug-ins report in the logging category "magres" (a headless host opens no message boxes), and keeps
/// the window system's chatter off the terminal. One at a time; other messages go on to the handler that was there.
class MessageLog {
public:
    MessageLog();
    ~MessageLog();
    MessageLog(const MessageLog &) = delete;
    MessageLog &operator=(const MessageLog &) = delete;

    /// Hand out what came since the last call.
    QStringList takeInformation();
    QStringList takeErrors();

private:
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message);

    static MessageLog *s_current;
    QtMessageHandler m_previous;
    QStringList m_information;
    QStringList m_errors;
};

} // namespace Workbench
