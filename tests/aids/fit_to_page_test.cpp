/// How large a picture is printed.

#include "aids/fit_to_page.h"

#include <gtest/gtest.h>

TEST(FitToPage, FillsTheWidthOfAPageThatIsHigherThanThePicture)
{
    // 190 wide, 190 * 800 / 1280 high
    EXPECT_EQ(FitToPage(QSizeF(1280, 800), QSizeF(190, 280)), QSizeF(190, 118.75));
}

TEST(FitToPage, FillsTheHeightOfAPageThatIsWiderThanThePicture)
{
    // 100 high, 100 * 1280 / 800 wide
    EXPECT_EQ(FitToPage(QSizeF(1280, 800), QSizeF(400, 100)), QSizeF(160, 100));
}

TEST(FitToPage, FillsTheWholePageWithAPictureOfItsProportions)
{
    EXPECT_EQ(FitToPage(QSizeF(640, 400), QSizeF(1600, 1000)), QSizeF(1600, 1000));
}

TEST(FitToPage, EnlargesASmallPicture)
{
    EXPECT_EQ(FitToPage(QSizeF(10, 20), QSizeF(500, 800)), QSizeF(400, 800));
}

TEST(FitToPage, KeepsALineWithinThePage)
{
    EXPECT_EQ(FitToPage(QSizeF(1, 100000), QSizeF(200, 300)), QSizeF(0.003, 300));
    EXPECT_EQ(FitToPage(QSizeF(100000, 1), QSizeF(200, 300)), QSizeF(200, 0.002));
}

TEST(FitToPage, GivesNothingForNothing)
{
    EXPECT_TRUE(FitToPage(QSizeF(0, 800), QSizeF(200, 300)).isEmpty());
    EXPECT_TRUE(FitToPage(QSizeF(1280, 800), QSizeF(200, 0)).isEmpty());
    EXPECT_TRUE(FitToPage(QSizeF(), QSizeF()).isEmpty());
}
