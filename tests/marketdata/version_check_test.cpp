#include "marketdata/version_check.h"

#include "cycle_run.h"

#include <gtest/gtest.h>

namespace
{

using namespace std::chrono_literals;
using Page = LoopbackServer::Page;

QByteArray FileOf(const QByteArray &version)
{
    return "<x>\n<Program_Version>" + version + "</Program_Version>\n</x>";
}

/// Monday 2026-03-02; version 6.0.18 runs; the check is due today.
class VersionCheck : public testing::Test
{
protected:
    VersionCheck()
    {
        run.settings.ShowReminderScreen = 1;
        run.settings.VerChkDt = Today;
        inet.AccessType = Inet::Direct;
        inet.StateChanged = [this](int) { ++statesPosted; };
    }
    void Check() { CheckAt(run.server.Address("/version.xml")); }
    void CheckAt(const QString &address)
    {
        CheckForNewVersion(run.settings, run.state, run.services, inet, address, *run.screens);
    }
    void CheckWith(const Page &page)
    {
        run.server.On("/version.xml", page);
        Check();
    }
    int Asked() const { return run.server.Requests("/version.xml"); }
    int TimesShown() const { return int(run.screens->log.count("new version")); }
    /// Another run of the program, with the settings of the one before.
    void StartAnew() { run.state = PriceUpdateState(); }
    void ExpectNoMessage()
    {
        EXPECT_TRUE(run.TakeBoxes().empty());
        EXPECT_EQ(run.TakeStatus(), QStringList());
        EXPECT_EQ(statesPosted, 0);
    }

    const QDate Today{2026, 3, 2};
    CycleRun run;
    Inet inet{run.clock};
    int statesPosted = 0;
};

} // namespace

// --- what the file says --------------------------------------------------------------------------

TEST_F(VersionCheck, ShowsTheScreenWhenTheVersionsDiffer)
{
    CheckWith(Page(FileOf("6.0.19")));
    EXPECT_EQ(TimesShown(), 1);
    EXPECT_EQ(run.state.WebVersionText, "6.0.19");
    EXPECT_TRUE(run.settings.NewVersion);
    EXPECT_EQ(run.settings.VerChkDt, QDate(2026, 3, 9));
    EXPECT_TRUE(run.state.VersionCheckedThisRun);
    ExpectNoMessage();
}

TEST_F(VersionCheck, OfAnEqualVersionClearsNewVersion)
{
    run.settings.NewVersion = true;
    CheckWith(Page(FileOf("6.0.18")));
    EXPECT_EQ(TimesShown(), 0);
    EXPECT_FALSE(run.settings.NewVersion);
    EXPECT_EQ(run.settings.VerChkDt, QDate(2026, 3, 9));
    EXPECT_TRUE(run.state.VersionCheckedThisRun);
}

TEST_F(VersionCheck, TakesAnOlderVersionForANewOneAsWell)
{
    CheckWith(Page(FileOf("6.0.17")));
    EXPECT_EQ(TimesShown(), 1);
    EXPECT_TRUE(run.settings.NewVersion);
}

TEST_F(VersionCheck, ComparesVersionsAsTexts)
{
    CheckWith(Page(FileOf("6.00.18")));
    EXPECT_EQ(TimesShown(), 1);
}

TEST_F(VersionCheck, TakesANotFoundPageForNoNews)
{
    run.settings.NewVersion = true;
    CheckWith(Page("<h1>Not Found</h1>" + FileOf("7.0.0")).Status(404));
    EXPECT_EQ(TimesShown(), 0);
    EXPECT_TRUE(run.settings.NewVersion); // as it was
    EXPECT_EQ(run.state.WebVersionText, "");
    EXPECT_EQ(run.settings.VerChkDt, QDate(2026, 3, 9));
    EXPECT_TRUE(run.state.VersionCheckedThisRun);
    ExpectNoMessage();
}

TEST_F(VersionCheck, TakesAnEmptyFileForNoNews)
{
    run.state.WebVersionText = "6.0.19";
    CheckWith(Page(""));
    EXPECT_EQ(TimesShown(), 0);
    EXPECT_FALSE(run.settings.NewVersion);
    EXPECT_EQ(run.state.WebVersionText, "");
    EXPECT_EQ(run.settings.VerChkDt, QDate(2026, 3, 9));
}

TEST_F(VersionCheck, TakesATextThatBeginsWithNoDigitForNoNews)
{
    run.settings.NewVersion = true;
    for (const char *version : {"", "beta", ".5.0", "..."}) {
        StartAnew();
        CheckWith(Page(FileOf(version)));
        EXPECT_EQ(TimesShown(), 0) << version;
        EXPECT_TRUE(run.settings.NewVersion) << version;
        EXPECT_TRUE(run.state.VersionCheckedThisRun) << version;
    }
}

TEST(VersionText, HasTheDigitsAndPointsUpToTheClosingTag)
{
    EXPECT_EQ(VersionTextOf(FileOf("6.0.19")), "6.0.19");
    EXPECT_EQ(VersionTextOf(FileOf(" Release 6.0.19 beta")), "6.0.19");
    EXPECT_EQ(VersionTextOf(FileOf("6") + FileOf("7")), "6");
    EXPECT_EQ(VersionTextOf("<Program_Version>6.1"), "6.1");
    EXPECT_EQ(VersionTextOf("<Program_Version>"), "");
    EXPECT_EQ(VersionTextOf(""), "");
}

TEST(VersionText, LongerThanTheWalkIsCutAtItsLimit)
{
    const QString longText = QStringLiteral("1234567890123456789012345678901234567890");
    EXPECT_EQ(VersionTextOf("<Program_Version>" + longText + "</Program_Version>"),
              longText.left(31)); // from P to P plus 30
}

TEST(VersionText, OfAFileWithoutTheTagIsReadFromItsHead)
{
    // The 17th character is the first one that is read.
    EXPECT_EQ(VersionTextOf("1234567890123456"
                            "7.8"),
              "7.8");
    EXPECT_EQ(VersionTextOf("1234567890123456"
                            "7x</Program_Version>8"),
              "7");
    EXPECT_EQ(VersionTextOf("6.0.19"), "");
    EXPECT_EQ(VersionTextOf("<program_version>9.9</program_version>"), "9.9"); // its tag's length
}

TEST(VersionText, TakesNoDigitsOfOtherScripts)
{
    EXPECT_EQ(VersionTextOf(QString::fromUtf8("<Program_Version>\xD9\xA3"
                                              "6.1</Program_Version>")),
              "6.1");
}

// --- when it looks -------------------------------------------------------------------------------

TEST_F(VersionCheck, AsksOncePerWeek)
{
    CheckWith(Page(FileOf("6.0.18")));
    EXPECT_EQ(Asked(), 1);
    StartAnew();
    run.clock.Advance(6 * 24h);
    Check();
    EXPECT_EQ(Asked(), 1);
    run.clock.Advance(24h); // the day that the check named
    Check();
    EXPECT_EQ(Asked(), 2);
}

TEST_F(VersionCheck, AsksOncePerRun)
{
    CheckWith(Page(FileOf("6.0.19")));
    Check();
    run.clock.Advance(30 * 24h);
    Check();
    EXPECT_EQ(Asked(), 1);
    EXPECT_EQ(TimesShown(), 1);
}

TEST_F(VersionCheck, RemindsInEachRunWhileANewVersionIsKnown)
{
    CheckWith(Page(FileOf("6.0.19")));
    for (int times = 2; times <= 4; ++times) {
        StartAnew();
        Check();
        EXPECT_EQ(TimesShown(), times);
    }
    CheckWith(Page(FileOf("6.0.18"))); // of this run no more
    EXPECT_TRUE(run.settings.NewVersion);
    StartAnew();
    Check();
    EXPECT_FALSE(run.settings.NewVersion);
    StartAnew();
    Check();
    EXPECT_EQ(Asked(), 5);
}

TEST_F(VersionCheck, IsOffWithoutTheReminder)
{
    run.settings.ShowReminderScreen = 0;
    run.settings.NewVersion = true;
    CheckWith(Page(FileOf("6.0.19")));
    EXPECT_EQ(Asked(), 0);
    EXPECT_FALSE(run.state.VersionCheckedThisRun);
    EXPECT_EQ(run.settings.VerChkDt, Today);

    run.settings.ShowReminderScreen = 1; // the settings screen has turned it on again
    Check();
    EXPECT_EQ(TimesShown(), 1);
}

TEST_F(VersionCheck, IsOffWithoutAnAddress)
{
    run.settings.NewVersion = true;
    CheckAt("");
    EXPECT_FALSE(run.state.VersionCheckedThisRun);
    EXPECT_EQ(run.settings.VerChkDt, Today);
    EXPECT_TRUE(run.settings.NewVersion);
}

TEST_F(VersionCheck, LooksWhenNoDateIsKnown)
{
    run.settings.VerChkDt = QDate();
    CheckWith(Page(FileOf("6.0.18")));
    EXPECT_EQ(Asked(), 1);
}

// --- when it fails -------------------------------------------------------------------------------

TEST_F(VersionCheck, AfterATimeOutAsksAgainInTheNextRun)
{
    inet.RequestTimeout = 100ms;
    CheckWith(Page::NeverAnswers());
    EXPECT_TRUE(run.state.VersionCheckedThisRun);
    EXPECT_EQ(run.settings.VerChkDt, Today);
    ExpectNoMessage();

    StartAnew();
    CheckWith(Page(FileOf("6.0.19")));
    EXPECT_EQ(TimesShown(), 1);
}

TEST_F(VersionCheck, AfterAFailedTransferWaitsAWeek)
{
    CheckWith(Page::ResetsAtOnce());
    EXPECT_TRUE(run.state.VersionCheckedThisRun);
    EXPECT_EQ(run.settings.VerChkDt, QDate(2026, 3, 9));
    EXPECT_EQ(TimesShown(), 0);
    ExpectNoMessage();
}

TEST_F(VersionCheck, AfterAnyOtherErrorWaitsAWeek)
{
    struct Failing : CycleRun::Screens
    {
        using Screens::Screens;
        void ShowNewVersion() override { throw RuntimeError::Overflow(); }
    } failing(run);
    run.server.On("/version.xml", Page(FileOf("6.0.19")));
    CheckForNewVersion(run.settings, run.state, run.services, inet,
                       run.server.Address("/version.xml"), failing);
    EXPECT_TRUE(run.state.VersionCheckedThisRun);
    EXPECT_EQ(run.settings.VerChkDt, QDate(2026, 3, 9));
    EXPECT_FALSE(run.settings.NewVersion);
    ExpectNoMessage();
}

TEST_F(VersionCheck, GivesTheStatesOfTheTransferBackAfterwards)
{
    run.server.On("/other", Page("text"));
    CheckWith(Page(FileOf("6.0.18")));
    ASSERT_EQ(statesPosted, 0);
    inet.OpenURL(run.server.Address("/other"));
    EXPECT_GT(statesPosted, 0);

    statesPosted = 0;
    StartAnew();
    run.settings.VerChkDt = Today;
    inet.RequestTimeout = 100ms;
    CheckWith(Page::NeverAnswers());
    ASSERT_EQ(statesPosted, 0);
    inet.RequestTimeout = 10s;
    inet.OpenURL(run.server.Address("/other"));
    EXPECT_GT(statesPosted, 0);
}

TEST_F(VersionCheck, TellsTheEndOfTheProgram)
{
    struct Ending : CycleRun::Screens
    {
        using Screens::Screens;
        void ShowNewVersion() override { throw ProgramEnded(); }
    } ending(run);
    run.server.On("/version.xml", Page(FileOf("6.0.19")));
    EXPECT_THROW(CheckForNewVersion(run.settings, run.state, run.services, inet,
                                    run.server.Address("/version.xml"), ending),
                 ProgramEnded);
    EXPECT_TRUE(inet.StateChanged);
}

TEST_F(VersionCheck, OfThePracticeSiteFindsNoNews)
{
    CheckAt(ResolveAddress("{practice}/version.xml", run.practiceServer));
    EXPECT_EQ(run.state.WebVersionText, "6.0.18");
    EXPECT_EQ(TimesShown(), 0);
    EXPECT_FALSE(run.settings.NewVersion);
    EXPECT_EQ(run.settings.VerChkDt, QDate(2026, 3, 9));
}
