#include "text/KeptForms.h"

#include "text/RandomString.h"

namespace {
constexpr int markLength = 20;
}

KeptForms::KeptForms()
    : m_mark(genRandString(markLength))
{
}

QString KeptForms::attributeFor(QStringView stored)
{
    m_texts.append(stored.toString());
    return QStringLiteral(" data-zalmo-stored='%1-%2'").arg(m_mark).arg(m_texts.size() - 1);
}
