#include "text/TextTruth.h"

#include "text/Scanning.h"

bool readsTrue(QStringView text)
{
    qsizetype at = Scanning::skipSpace(text, 0);
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+'))
        ++at;
    while (at < text.size() && text[at] == u'0')
        ++at;
    return at < text.size() && QStringView(u"123456789YyTt").contains(text[at]);
}
