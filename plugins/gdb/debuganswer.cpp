#include "debuganswer.h"
#include <QCoreApplication>

DebugAnswer::DebugAnswer(const DebugRequest &request, IDebugReplies *replies)
    : m_request(request), m_replies(shareInterface(replies))
{}

DebugAnswer::~DebugAnswer()
{
    if (m_replies)
        failed(QCoreApplication::translate("DebugAnswer", "The debug session has ended."));
}
