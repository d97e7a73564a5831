#include "ui/controls/SecretText.h"

#include <gtest/gtest.h>

namespace tapalong {

using Selecting = SecretText::Selecting;

TEST(SecretText, InsertsAtTheCaretAndInPlaceOfTheSelection) {
    SecretText secret;
    secret.insert("abc");
    secret.moveLeft(Selecting::no);
    secret.insert("x");
    EXPECT_EQ(secret.text(), "abxc");
    secret.moveLeft(Selecting::yes);
    secret.moveLeft(Selecting::yes);
    secret.insert("-");
    EXPECT_EQ(secret.text(), "a-c");
    EXPECT_EQ(secret.caret(), 2);
}

TEST(SecretText, DeletesBackwardsForwardsAndNothingAtTheEnds) {
    SecretText secret;
    secret.setText("abc");
    secret.deleteForward();
    EXPECT_EQ(secret.text(), "abc");
    secret.backspace();
    EXPECT_EQ(secret.text(), "ab");
    secret.moveTo(0);
    secret.backspace();
    EXPECT_EQ(secret.text(), "ab");
    secret.deleteForward();
    EXPECT_EQ(secret.text(), "b");
}

TEST(SecretText, CountsCharactersAsAReaderSeesThem) {
    SecretText secret;
    secret.insert(QString::fromUtf8("e\u0301\U0001F468\u200D\U0001F469\u200D\U0001F467x"));
    EXPECT_EQ(secret.length(), 3);
    secret.moveLeft(Selecting::no);
    secret.backspace();
    EXPECT_EQ(secret.text(), QString::fromUtf8("e\u0301x"));
}

TEST(SecretText, AccentTypedAfterItsLetterLeavesTheCaretBehindBoth) {
    SecretText secret;
    secret.setText("ex");
    secret.moveTo(1);
    secret.insert(QString::fromUtf8("\u0301"));
    EXPECT_EQ(secret.length(), 2);
    EXPECT_EQ(secret.caret(), 1);
}

TEST(SecretText, ArrowCollapsesASelectionToItsNearEnd) {
    SecretText secret;
    secret.setText("abcd");
    secret.selectAll();
    secret.moveLeft(Selecting::no);
    EXPECT_EQ(secret.caret(), 0);
    secret.selectAll();
    secret.moveRight(Selecting::no);
    EXPECT_EQ(secret.caret(), 4);
    EXPECT_EQ(secret.selectionStart(), secret.selectionEnd());
}

TEST(SecretText, LineBreaksOfAPastedTextAreLeftOut) {
    SecretText secret;
    secret.insert("a\nb\tc\r");
    EXPECT_EQ(secret.text(), "abc");
}

TEST(SecretText, DeletesToTheStart) {
    SecretText secret;
    secret.setText("abcd");
    secret.moveTo(3);
    secret.deleteToStart();
    EXPECT_EQ(secret.text(), "d");
    EXPECT_EQ(secret.caret(), 0);
}

} // namespace tapalong
