#include "library/CategoryName.h"
#include "library/SearchKey.h"

#include <QLocale>

#include <gtest/gtest.h>

using namespace quillbay;

namespace {

bool contains(const char16_t *name, const char16_t *query)
{
    return searchKey(QString::fromUtf16(name)).contains(searchKey(QString::fromUtf16(query)));
}

} // namespace

TEST(CategoryName, IsTheLastComponentCapitalised)
{
    const auto name = [](const char *type) { return categoryName(QString::fromUtf8(type)).toStdString(); };
    EXPECT_EQ(name("public.app-category.developer-tools"), "Developer-Tools");
    EXPECT_EQ(name("public.app-category.games"), "Games");
    EXPECT_EQ(name("public.app-category.SOCIAL-networking"), "Social-Networking");
    EXPECT_EQ(name("plain"), "Plain");
    EXPECT_EQ(name("x.role playing2d games"), "Role Playing2d Games");
    EXPECT_EQ(name("x.écran"), "Écran");
    EXPECT_EQ(name("public.app-category."), "");
    EXPECT_EQ(name(""), "");
    EXPECT_EQ(categoryName(QString()), otherCategory());
}

TEST(SearchKey, IgnoresCaseAndCompositionButNotAccents)
{
    EXPECT_TRUE(contains(u"Firefox Web Browser", u"WEB b"));
    EXPECT_TRUE(contains(u"Straße", u"STRASSE"));
    EXPECT_TRUE(contains(u"Cafe\u0301", u"CAF\u00c9"));
    EXPECT_TRUE(contains(u"ΣΊΣΥΦΟΣ", u"σίσυφος"));
    EXPECT_FALSE(contains(u"Café", u"cafe\u0300"));
    EXPECT_FALSE(contains(u"Files", u"fils"));
}

TEST(SearchKey, KnowsTheDotlessI)
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Turkish));
    EXPECT_TRUE(contains(u"İstanbul", u"istanbul"));
    EXPECT_TRUE(contains(u"ISPARTA", u"ısparta"));
    EXPECT_FALSE(contains(u"ISPARTA", u"isparta"));
    QLocale::setDefault(before);
    EXPECT_TRUE(contains(u"ISPARTA", u"isparta"));
}
