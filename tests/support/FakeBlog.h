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
        QString status = QStringLiteral("publish");
        QString title;
        QString content;
        QString slug;
        QDateTime date;
        QDateTime modified;
        QStringList categories; ///< as the writer typed them; replies escape them
        QStringList tags;
        QString commentStatus = QStringLiteral("open");
        QString pingStatus = QStringLiteral("open");
        QString thumbnail; ///< number of an upload; empty: none
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
        QByteArray document;
    };

    explicit FakeBlog(const QString &host = QStringLiteral("blog.test"));

    // state
    QString user = QStringLiteral("ada");
    QString password = QStringLiteral("secret");
    QString title = QStringLiteral("Ada's R&D");
    QMap<QString, Post> posts; ///< by id
    QList<Term> terms;
    QList<Media> media;
    QDateTime now; ///< what it takes for the present; moves on by a second with each change

    QString url() const { return QStringLiteral("http://") + m_host; }
    QString host() const { return m_host; }
    Post &addPost(const QString &title, const QString &content, const QString &type = QStringLiteral("post"));
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
    void answerWithStatus(const QString &method, int status);
    void answerWithBytes(const QString &method, const QByteArray &bytes);
    void answerEmpty(const QString &method);
    void answerCut(const QString &method, int length); ///< done, but the reply breaks off
    void answerLate(const QString &method); ///< done, but the reply waits for FakeNetwork::release()
    void breakConnection(const QString &method, QNetworkReply::NetworkError error);

    FakeAnswer answer(const FakeRequest &request) override;

private:
    struct Fault {
        std::optional<FakeAnswer> instead;
        int cutAt = -1;
        bool late = false;
    };
    struct Refusal {
        int code;
        QString text;
    };
    using Outcome = std::variant<XMLRPCValue, Refusal>;
    using Method = Outcome (FakeBlog::*)(const XMLRPCArray &);
    static const QHash<QString, Method> &table();

    void disturb(const QString &method, const Fault &fault);
    Outcome perform(const Call &call);
    std::optional<Refusal> refusedLogin(const Call &call) const;
    QString nextId() { return QString::number(++m_lastId); }
    QDateTime tick();

    Outcome getOptions(const XMLRPCArray &parameters);
    Outcome getProfile(const XMLRPCArray &parameters);
    Outcome getUsersBlogs(const XMLRPCArray &parameters);
    Outcome getPosts(const XMLRPCArray &parameters);
    Outcome getPost(const XMLRPCArray &parameters);
    Outcome newPost(const XMLRPCArray &parameters);
    Outcome editPost(const XMLRPCArray &parameters);
    Outcome deletePost(const XMLRPCArray &parameters);
    Outcome getTerms(const XMLRPCArray &parameters);
    Outcome newCategory(const XMLRPCArray &parameters);
    Outcome getCategories(const XMLRPCArray &parameters);
    Outcome newMediaObject(const XMLRPCArray &parameters);
    Outcome metaGetPost(const XMLRPCArray &parameters);
    Outcome metaGetRecentPosts(const XMLRPCArray &parameters);
    Outcome metaNewPost(const XMLRPCArray &parameters);

    std::optional<Refusal> take(Post &post, const XMLRPCStruct &content);
    std::optional<Refusal> takeTerms(Post &post, const XMLRPCStruct &content);
    void takeDate(Post &post, const XMLRPCStruct &content);
    QList<Post> newestFirst(const QString &type) const;
    const Term *term(const QString &taxonomy, const QString &name) const;
    const Term *termById(const QString &taxonomy, const QString &id) const;

    QString m_host;
    int m_lastId = 100;
    QMap<QString, QList<Fault>> m_faults;
};
