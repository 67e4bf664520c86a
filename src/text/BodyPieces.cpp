#include "text/BodyPieces.h"

#include "text/ContentPasses.h"
#include "text/MarkupScanner.h"
#include "text/Scanning.h"

#include <QHash>
#include <vector>

namespace {
using Kind = MarkupToken::Kind;

/// Raw-text elements end with their start token, as the scanner takes their content in.
bool endsWithItsToken(const MarkupToken &token)
{
    return token.kinds() & (ElementKinds::Void | ElementKinds::RawText);
}

bool isBlockStart(const MarkupToken &token)
{
    return token.isStart() && (token.kinds() & ElementKinds::Block);
}

/// What a comment says to the block editor.
struct BlockComment {
    bool isBlock = false;
    bool isCloser = false;
    bool isVoid = false;
};

BlockComment blockComment(QStringView comment)
{
    if (!comment.startsWith(u"<!--") || !comment.endsWith(u"-->") || comment.size() < 7)
        return {};
    const QStringView inside = comment.sliced(4, comment.size() - 7).trimmed();
    if (inside.startsWith(u"/wp:"))
        return {true, true, false};
    return {inside.startsWith(u"wp:"), false, inside.endsWith(u'/')};
}

class Splitter {
public:
    explicit Splitter(const QString &body)
        : m_body(body)
    {
    }

    QList<BodyPiece> split();

private:
    void splitBlocks(qsizetype from);
    void splitLoose(qsizetype from, qsizetype to);
    void splitRun(qsizetype from, qsizetype to);
    bool isPlayerLine(qsizetype from, qsizetype to) const;
    struct Span {
        qsizetype start, end;
    };
    std::vector<Span> closedSpans(qsizetype from, qsizetype to) const;
    qsizetype elementEnd(const MarkupToken &start, MarkupScanner &scanner, qsizetype to) const;
    void add(qsizetype from, qsizetype coreFrom, qsizetype coreTo, qsizetype to);
    void addBlock(qsizetype from, qsizetype contentFrom, qsizetype contentTo, qsizetype to);
    void addTrimmed(qsizetype from, qsizetype to);
    qsizetype skipSpace(qsizetype from, qsizetype to) const;
    qsizetype skipSpaceBack(qsizetype from, qsizetype to) const;
    QStringView textOf(const MarkupToken &token) const
    {
        return QStringView(m_body).sliced(token.start, token.end - token.start);
    }

    const QString &m_body;
    QList<BodyPiece> m_pieces;
};

QList<BodyPiece> Splitter::split()
{
    const qsizetype begin = skipSpace(0, m_body.size());
    if (ContentPasses::isBlockEditorContent(m_body))
        splitBlocks(begin);
    else
        splitLoose(begin, m_body.size());
    if (m_pieces.isEmpty() && begin > 0)
        add(0, begin, begin, begin);
    else if (begin > 0)
        m_pieces.first().lead.prepend(m_body.first(begin));
    return m_pieces;
}

qsizetype Splitter::skipSpace(qsizetype from, qsizetype to) const
{
    while (from < to && MarkupScanner::isSpace(m_body[from]))
        ++from;
    return from;
}

qsizetype Splitter::skipSpaceBack(qsizetype from, qsizetype to) const
{
    while (to > from && MarkupScanner::isSpace(m_body[to - 1]))
        --to;
    return to;
}

void Splitter::add(qsizetype from, qsizetype coreFrom, qsizetype coreTo, qsizetype to)
{
    const auto slice = [this](qsizetype a, qsizetype b) { return m_body.sliced(a, b - a); };
    m_pieces << BodyPiece{slice(from, coreFrom), slice(coreFrom, coreTo), slice(coreTo, to), {}};
}

void Splitter::addBlock(qsizetype from, qsizetype contentFrom, qsizetype contentTo, qsizetype to)
{
    const qsizetype coreFrom = skipSpace(contentFrom, contentTo);
    add(from, coreFrom, skipSpaceBack(coreFrom, contentTo), to);
}

/// A piece takes the white space behind it along.
void Splitter::addTrimmed(qsizetype from, qsizetype to)
{
    if (from < to)
        add(from, from, skipSpaceBack(from, to), to);
}

void Splitter::splitBlocks(qsizetype from)
{
    MarkupScanner scanner(m_body, from);
    qsizetype done = from; // all before it is in pieces
    qsizetype blockStart = -1;
    qsizetype contentStart = 0;
    int depth = 0;
    while (const auto token = scanner.next()) {
        const BlockComment comment = token->kind == Kind::Comment ? blockComment(textOf(*token)) : BlockComment();
        if (!comment.isBlock || (comment.isCloser && depth == 0))
            continue;
        if (!comment.isCloser && depth == 0) {
            splitLoose(done, token->start);
            done = blockStart = token->start;
            contentStart = token->end;
        }
        if (!comment.isVoid)
            depth += comment.isCloser ? -1 : 1;
        if (depth > 0)
            continue;
        const qsizetype end = skipSpace(token->end, m_body.size());
        if (comment.isVoid)
            add(blockStart, token->start, token->end, end);
        else
            addBlock(blockStart, contentStart, token->start, end);
        done = end;
    }
    if (depth > 0)
        addBlock(blockStart, contentStart, m_body.size(), m_body.size());
    else
        splitLoose(done, m_body.size());
}

void Splitter::splitLoose(qsizetype from, qsizetype to)
{
    MarkupScanner scanner(QStringView(m_body).first(to), from);
    qsizetype runStart = from;
    while (auto token = scanner.next()) {
        if (!isBlockStart(*token))
            continue;
        splitRun(runStart, token->start);
        const qsizetype elementTo = elementEnd(*token, scanner, to);
        runStart = skipSpace(elementTo, to);
        addTrimmed(token->start, runStart);
        scanner = MarkupScanner(QStringView(m_body).first(to), runStart);
    }
    splitRun(runStart, to);
}

qsizetype Splitter::elementEnd(const MarkupToken &start, MarkupScanner &scanner, qsizetype to) const
{
    if (endsWithItsToken(start))
        return start.end;
    const bool isParagraph = start.isNamed(u"p");
    int depth = 1;
    while (const auto token = scanner.next()) {
        if (isParagraph && token->isStart() && (token->kinds() & ElementKinds::ClosesParagraph))
            return token->start;
        if (token->kind == Kind::Comment || !token->isNamed(start.name))
            continue;
        depth += token->isStart() ? 1 : -1;
        if (depth == 0)
            return token->end;
    }
    return to;
}

bool Splitter::isPlayerLine(qsizetype from, qsizetype to) const
{
    from = skipSpace(from, to);
    to = skipSpaceBack(from, to);
    return ContentPasses::isPlayer(QStringView(m_body).sliced(from, to - from));
}

/// Cuts text and inline elements at blank lines and around players, but not within an inline element that is closed in
/// this run.
void Splitter::splitRun(qsizetype from, qsizetype to)
{
    const std::vector<Span> spans = closedSpans(from, to);
    auto span = spans.cbegin();
    qsizetype start = from; // of the piece
    qsizetype lineStart = from;
    for (qsizetype position = from; position < to;) {
        position = Scanning::indexOf(QStringView(m_body).first(to), u'\n', position);
        while (span != spans.cend() && span->end <= position)
            ++span;
        if (position < to && span != spans.cend() && span->start < position) {
            position = span->end;
            continue;
        }
        const qsizetype after = skipSpace(position, to);
        const bool isPlayer = isPlayerLine(lineStart, position);
        if (isPlayer) {
            addTrimmed(start, lineStart);
            start = lineStart;
        }
        const qsizetype rest = std::min(position + 1, after);
        if (isPlayer || QStringView(m_body).sliced(rest, after - rest).contains(u'\n')) {
            addTrimmed(start, after);
            start = after;
        }
        lineStart = position = std::max(after, rest);
    }
    addTrimmed(start, to);
}

/// Where inline elements are that are closed in this run, and all other tags and comments.
std::vector<Splitter::Span> Splitter::closedSpans(qsizetype from, qsizetype to) const
{
    std::vector<Span> spans;
    QHash<QString, std::vector<qsizetype>> open;
    MarkupScanner scanner(QStringView(m_body).first(to), from);
    while (const auto token = scanner.next()) {
        const QString name = token->name.toString().toLower();
        auto opener = token->kind == Kind::EndTag ? open.find(name) : open.end();
        if (opener != open.end() && !opener->empty()) {
            // Spans that this one holds are inside it; what it overlaps stays, and the search steps over both.
            while (!spans.empty() && spans.back().start >= opener->back())
                spans.pop_back();
            spans.push_back({opener->back(), token->end});
            opener->pop_back();
        } else {
            spans.push_back({token->start, token->end});
            if (token->isStart() && !(token->kinds() & ElementKinds::Void))
                open[name].push_back(token->start);
        }
    }
    return spans;
}
} // namespace

QList<BodyPiece> BodyPieces::split(const QString &stored)
{
    return Splitter(stored).split();
}
