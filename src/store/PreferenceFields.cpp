#include "store/PreferenceFields.h"

QVariant PreferenceField::of(const AccountPreferences &preferences) const
{
    return std::visit(
        [&](auto at) {
            const std::optional value(preferences.*at);
            return value ? QVariant(int(*value)) : QVariant(QMetaType::fromType<int>());
        },
        member);
}

void PreferenceField::set(AccountPreferences &preferences, const QVariant &value) const
{
    std::visit(
        [&](auto at) {
            auto &field = preferences.*at;
            field = value.value<std::remove_cvref_t<decltype(*std::optional(field))>>();
            if constexpr (requires { field.reset(); }) {
                if (value.isNull())
                    field.reset();
            }
        },
        member);
}

std::span<const PreferenceField> preferenceFields()
{
    using P = AccountPreferences;
    static const PreferenceField fields[] = {
        {QLatin1String("allow_comments"), &P::allow_comments},
        {QLatin1String("allow_pingback"), &P::allow_pingback},
        {QLatin1String("allow_notifications"), &P::allow_notifications},
        {QLatin1String("default_article_type"), &P::default_article_type},
        {QLatin1String("default_open_image_link"), &P::default_open_image_link},
        {QLatin1String("default_open_links"), &P::default_open_links},
        {QLatin1String("feature_image_width"), &P::feature_image_width},
        {QLatin1String("feature_image_height"), &P::feature_image_height},
        {QLatin1String("thumb_image_width"), &P::thumb_image_width},
        {QLatin1String("thumb_image_height"), &P::thumb_image_height},
        {QLatin1String("full_image_as_default"), &P::full_image_as_default},
        {QLatin1String("recent_posts"), &P::recent_posts},
        {QLatin1String("use_feature_image"), &P::use_feature_image},
        {QLatin1String("login_automatically"), &P::login_automatically},
    };
    return fields;
}
