#pragma once

#include "support/FakeNetwork.h"
#include "xmlrpc/XMLRPCValue.h"

#include <QDateTime>
#include <QMap>
#include <QStringList>

/// A pretended WordPress with state. It looks at the method and the parameters of each call, behaves as the real one
/// does where that may surprise, keeps what it was sent, and lets tests put faults in.
class FakeBlog : public FakeHost {
public:
    struct Post {
        QString id;
        QString type; ///< "post", "page"
        QString status = u"publish"_qs; ///< "publish", "future", "draft", "private", "pending", "trash"
        QString title;
        QString content;
        QString slug;
        QDateTime date;
        QDateTime modified;
        QStringList categories; ///< as the writer typed them; replies escape them
        QStringList tags;
        QString commentStatus = u"open"_qs;
        QString pingStatus = u"open"_qs;
        bool operator==(const Post &) const = default;
    };
    struct Term {
        QString id;
        QString taxonomy; ///< "category", "post_tag"
        QString name;
    };
    struct Media {
        QString id;
        QString name;
        QString type;
        QByteArray bytes;
        QString url;
    };
    struct Call {
        QString method;
        XMLRPCArray parameters;
    };

    explicit FakeBlog(const QString &host = u"blog.test"_qs);

    // state
    QString user = u"ada"_qs;
    QString password = u"secret"_qs;
    QString role = u"editor"_qs; ///< "author" and "contributor" may not list pages, "subscriber" nothing
    QString title = u"Ada's R&D"_qs;
    QMap<QString, Post> posts; ///< by id
    QList<Term> terms;
    QList<Media> media;
    QDateTime now; ///< what it takes for the present; moves on by a second with each change
    bool hasHttps = true;
    bool hasHttp = true; ///< otherwise it sends on to https
    bool isDated = true; ///< whether its replies bear the time

    QString url() const { return u"http://"_qs + m_host; }
    QString host() const { return m_host; }
    Post &addPost(const QString &title, const QString &content, const QString &type = u"post"_qs);
    QString addTerm(const QString &taxonomy, const QString &name); ///< gives its id

    // what was asked
    QList<Call> calls;
    QStringList methods() const; ///< of all calls so far
    int count(const QString &method) const;
    const Call &last(const QString &method) const;
    QStringList protocolErrors; ///< documents that no blog would understand

    // faults: each is for the next call of the method that has none yet
    void answerWithFault(const QString &method, int code, const QString &text);
    void answerWith(const QString &method, const XMLRPCValue &value); ///< without doing anything
    void answerWithStatus(const QString &method, int status) { disturb(method, {FakeAnswer{status}}); }
    void answerWithBytes(const QString &method, const QByteArray &bytes) { disturb(method, {FakeAnswer{200, bytes}}); }
    void answerEmpty(const QString &method) { answerCut(method, 0); }
    /// Done, but the reply breaks off.
    void answerCut(const QString &method, int length) { disturb(method, {.cutAt = length}); }
    /// Done, but the reply waits for FakeNetwork::release().
    void answerLate(const QString &method) { disturb(method, {.late = true}); }
    void breakConnection(const QString &method, QNetworkReply::NetworkError error)
    {
        disturb(method, {FakeAnswer{.error = error}});
    }

    FakeAnswer answer(const FakeRequest &request) override;

private:
    struct Fault {
        std::optional<FakeAnswer> instead = {};
        int cutAt = -1;
        bool late = false;
    };
    struct Refusal { ///< thrown, and answered as a fault
        int code;
        QString text;
    };
    using Method = std::function<XMLRPCValue(FakeBlog &, const XMLRPCArray &)>;
    static const QHash<QString, Method> &table();

    void disturb(const QString &method, const Fault &fault) { m_faults[method].append(fault); }
    XMLRPCValue perform(const QString &method, XMLRPCArray parameters);
    QString nextId() { return QString::number(++m_lastId); }
    QDateTime tick() { return now = now.addSecs(1); }

    /// Whether the user may edit posts of this type, which is what listing them takes.
    bool mayEdit(const QString &type) const;
    Post &post(const XMLRPCValue &id); ///< or a refusal
    XMLRPCValue options() const;
    XMLRPCValue list(const XMLRPCStruct &filter) const;
    XMLRPCValue list(const QString &taxonomy, XMLRPCStruct (*form)(const Term &)) const;
    XMLRPCValue keep(const XMLRPCValue &data);
    void take(Post &post, const XMLRPCStruct &content);
    void takeTerms(Post &post, const XMLRPCStruct &content);
    /// The term whose `field` has the value; none: null.
    const Term *term(const QString &taxonomy, QString Term::*field, const QString &value) const;
    XMLRPCStruct wpPost(const Post &post) const;
    XMLRPCStruct metaWeblogPost(const Post &post) const;

    QString m_host;
    int m_lastId = 100;
    QMap<QString, QList<Fault>> m_faults;
};
