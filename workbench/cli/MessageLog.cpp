// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/MessageLog.h"

#include <string_view>
#include <utility>

namespace Workbench {

MessageLog *MessageLog::s_current = nullptr;

MessageLog::MessageLog() : m_previous(qInstallMessageHandler(&MessageLog::handle))
{
    s_current = this;
}

MessageLog::~MessageLog()
{
    qInstallMessageHandler(m_previous);
    s_current = nullptr;
}

QStringList MessageLog::takeInformation()
{
    return std::exchange(m_information, {});
}

QStringList MessageLog::takeErrors()
{
    return std::exchange(m_errors, {});
}

void MessageLog::handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    const std::string_view category = context.category ? context.category : "";
    if (category == "magres" && type == QtCriticalMsg)
        s_current->m_errors.append(message);
    else if (category == "magres" && type == QtInfoMsg)
        s_current->m_information.append(message);
    else if (!category.starts_with("qt.qpa") || type == QtFatalMsg)
        s_current->m_previous(type, context, message);
}

} // namespace Workbench
