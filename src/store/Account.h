#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <memory>
#include <optional>

/// The persistent entities: plain objects that live in one ZLManagedObjectContext. Attributes bear the store's names.

/// Per-blog preferences. The starting values hold for a new object. PreferenceFields.h has them as a table.
struct AccountPreferences {
    bool allow_comments = true;
    bool allow_pingback = true;
    bool allow_notifications = true;
    int default_article_type = 0; ///< 1 makes new posts pages
    int default_open_image_link = 0; ///< 1 opens links on images in the same window
    int default_open_links = 0;
    int feature_image_width = 640;
    int feature_image_height = 360;
    int thumb_image_width = 300;
    int thumb_image_height = 300;
    bool full_image_as_default = true;
    int recent_posts = 0;
    bool use_feature_image = false;
    std::optional<bool> login_automatically = true; ///< its presence and its value are tested in different places

    bool operator==(const AccountPreferences &) const = default;
};

/// The link of one blog to one notebook.
struct Evernote {
    QString notebook_guid;
    QDateTime last_synced;

    bool operator==(const Evernote &) const = default;
};

/// One category or tag of one blog.
struct Taxonomy {
    QString name;
    QString taxonomy_id; ///< the blog's term id; null when not known yet
    int taxonomy_type = 0; ///< 0 category, 1 tag

    bool operator==(const Taxonomy &) const = default;
};
using TaxonomyPtr = std::shared_ptr<Taxonomy>;

/// What an account and its row share, copied as a whole.
struct AccountFields {
    qint64 rowid = 0; ///< the store's key; 0 before the first save
    QString blog_name; ///< the blog's alias; null when not set
    QString name; ///< the user name used to log in
    int type = 0;
    QString url; ///< the blog's address, without "/xmlrpc.php" and never with a login in it

    bool operator==(const AccountFields &) const = default;
};

/// One connected blog.
struct Account : AccountFields {
    std::shared_ptr<Evernote> evernote;
    std::shared_ptr<AccountPreferences> preferences;
    QList<TaxonomyPtr> taxonomies;

    /// `blog_name` if set, else `name`: what names the blog's directory and is shown to the user.
    QString alias() const { return blog_name.isNull() ? name : blog_name; }
};
using AccountPtr = std::shared_ptr<Account>;

/// Which account was current.
struct SelectedAccount {
    QDateTime date;
    AccountPtr account;
};
using SelectedAccountPtr = std::shared_ptr<SelectedAccount>;
