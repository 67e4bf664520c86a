#include "text/ContentPasses.h"

#include "text/Rewriter.h"
#include "text/Scanning.h"

#include <QHash>
#include <algorithm>
#include <vector>

using namespace Scanning;

// Bare addresses of videos, between white space, become shortcodes in a container.
//
// The white space on both sides belongs to the address, so two addresses that share one blank cannot both be taken.
// Where the second is known from another place, the one that comes first in the text is replaced first.

namespace {
struct Address {
    qsizetype start = 0;
    qsizetype end = 0;
    bool leads = false; ///< has white space in front
    bool ends = false; ///< has white space behind
};

/// All addresses with their white space, from left to right, also those that share it.
class Addresses {
public:
    explicit Addresses(QStringView text)
        : m_text(text)
    {
    }
    bool next(Address &address)
    {
        for (qsizetype colon = indexOf(m_text, u':', m_at); colon < m_text.size();
             colon = indexOf(m_text, u':', colon + 1)) {
            const qsizetype scheme = schemeBefore(colon);
            if (scheme < 0 || !matches(m_text, colon, site))
                continue;
            address.leads = scheme > 0;
            if (address.leads && !isSpace(m_text[scheme - 1].unicode()))
                continue;
            qsizetype end = colon + qsizetype(site.size());
            while (end < m_text.size() && !isSpace(m_text[end].unicode()))
                ++end;
            address.ends = end < m_text.size();
            address.start = scheme - (address.leads ? 1 : 0);
            address.end = end + (address.ends ? 1 : 0);
            m_at = end;
            return true;
        }
        m_at = m_text.size();
        return false;
    }

private:
    static constexpr std::u16string_view site = u"://www.youtube.com/watch?v=";

    qsizetype schemeBefore(qsizetype colon) const
    {
        if (colon >= 5 && matches(m_text, colon - 5, u"https"))
            return colon - 5;
        return colon >= 4 && matches(m_text, colon - 4, u"http") ? colon - 4 : -1;
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

QString videoOf(const QString &address)
{
    return QStringLiteral("<div draggable='true' class='youtube'>[youtube=%1&w=640&h=360]</div>").arg(address);
}

/// What is replaced, and how early.
class VideoAddresses {
public:
    explicit VideoAddresses(const QString &content)
    {
        qsizetype taken = 0;
        Addresses addresses(content);
        for (Address address; addresses.next(address);) {
            if (address.start < taken)
                continue; // its white space went to the one before
            taken = address.end;
            const QString key = content.sliced(address.start, address.end - address.start);
            if (!address.leads || !address.ends)
                m_atTheEdges.append(key);
            else if (!m_ranks.contains(key))
                m_ranks.insert(key, m_ranks.size());
        }
    }

    QString replaced(QString content) const
    {
        for (const QString &key : m_atTheEdges)
            content.replace(key, videoOf(key));
        if (m_ranks.isEmpty())
            return content;
        Rewriter out(content);
        std::vector<Candidate> run; // addresses that share white space
        Addresses addresses(content);
        for (Address address; addresses.next(address);) {
            const auto rank = address.leads && address.ends
                ? m_ranks.constFind(QStringView(content).sliced(address.start, address.end - address.start).toString())
                : m_ranks.constEnd();
            if (!run.empty() && address.start >= run.back().end)
                replaceRun(out, content, run);
            if (rank != m_ranks.constEnd())
                run.push_back({address.start, address.end, *rank, true});
        }
        replaceRun(out, content, run);
        return out.result();
    }

private:
    struct Candidate {
        qsizetype start;
        qsizetype end;
        qsizetype rank;
        bool free;
    };

    static void replaceRun(Rewriter &out, const QString &content, std::vector<Candidate> &run)
    {
        std::vector<size_t> order(run.size());
        for (size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) { return run[a].rank < run[b].rank; });
        for (const size_t i : order) {
            if (!run[i].free)
                continue;
            if (i > 0 && run[i - 1].end > run[i].start)
                run[i - 1].free = false;
            if (i + 1 < run.size() && run[i].end > run[i + 1].start)
                run[i + 1].free = false;
        }
        for (const Candidate &one : run) {
            if (one.free)
                out.replace(one.start, one.end, videoOf(content.sliced(one.start, one.end - one.start)));
        }
        run.clear();
    }

    QStringList m_atTheEdges; ///< at the very start or end of the text, so without white space there
    QHash<QString, qsizetype> m_ranks;
};
} // namespace

QString ContentPasses::postContentWithVideoURLTags(const QString &content)
{
    return VideoAddresses(content).replaced(content);
}
