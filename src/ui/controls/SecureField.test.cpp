#include "ui/controls/SecureField.h"

#include "ui/Gui.test.h"
#include "views/SettingsView.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>

#include <gtest/gtest.h>

namespace tapalong {

namespace {

struct SettingsFieldTest : testing::Test {
    SettingsFieldTest() {
        gui.open(gui.app.settingsView(), {500, 1100});
        field = gui.window->rootObject()->findChild<SecureField*>();
        field->forceActiveFocus();
    }
    ~SettingsFieldTest() override { EXPECT_EQ(takeWarnings().join("\n").toStdString(), ""); }

    void type(const char* text) {
        for (const char* c = text; *c != '\0'; ++c) {
            press(*gui.window, 0, QString(QChar(*c)));
        }
    }
    std::string password() { return gui.app.settings().exitPassword.get(); }

    Gui gui;
    SecureField* field = nullptr;
};

/// Every text that an assistive program could ask the object or its children for.
QString everythingReadable(QAccessibleInterface* object) {
    QString all;
    for (const auto kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value, QAccessible::Help,
                            QAccessible::Accelerator, QAccessible::DebugDescription, QAccessible::UserText}) {
        all += object->text(kind) + '\n';
    }
    if (auto* text = object->textInterface()) {
        all += text->text(0, text->characterCount()) + '\n';
    }
    if (auto* value = object->valueInterface()) {
        all += value->currentValue().toString() + '\n';
    }
    for (int i = 0; i < object->childCount(); ++i) {
        all += everythingReadable(object->child(i));
    }
    return all;
}

} // namespace

TEST_F(SettingsFieldTest, TypingGoesStraightToTheStore) {
    type("secret");
    EXPECT_EQ(password(), "secret");
    press(*gui.window, Qt::Key_Backspace, "\b");
    EXPECT_EQ(password(), "secre");
}

TEST_F(SettingsFieldTest, CaretStaysWhereItIsWhenTheStoreAnswers) {
    type("ac");
    press(*gui.window, Qt::Key_Left);
    type("b");
    turn();
    type("b");
    turn();
    EXPECT_EQ(password(), "abbc");
}

TEST_F(SettingsFieldTest, CaretBlinksAsTheDesktopsButNeverThreeTimesASecond) {
    EXPECT_EQ(SecureField::blinkInterval(1000), 500);
    EXPECT_EQ(SecureField::blinkInterval(0), 0);
    for (const int period : {2, 50, 333, 400}) {
        EXPECT_GT(2 * SecureField::blinkInterval(period), 1000 / 3) << period;
    }
}

TEST_F(SettingsFieldTest, HomeEndDeleteAndSelectAll) {
    type("abc");
    press(*gui.window, Qt::Key_Home);
    press(*gui.window, Qt::Key_Delete, "\x7f");
    press(*gui.window, Qt::Key_End);
    type("d");
    EXPECT_EQ(password(), "bcd");
    press(*gui.window, Qt::Key_A, "\x01", Qt::ControlModifier);
    type("z");
    EXPECT_EQ(password(), "z");
}

TEST_F(SettingsFieldTest, PastesButNeverCopies) {
    QGuiApplication::clipboard()->setText("paste\nd");
    press(*gui.window, Qt::Key_V, "\x16", Qt::ControlModifier);
    EXPECT_EQ(password(), "pasted");
    press(*gui.window, Qt::Key_A, "\x01", Qt::ControlModifier);
    press(*gui.window, Qt::Key_C, "\x03", Qt::ControlModifier);
    press(*gui.window, Qt::Key_X, "\x18", Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "paste\nd");
    EXPECT_EQ(password(), "pasted");
}

TEST_F(SettingsFieldTest, WhateverIsNoControlCharacterTypes) {
    for (const char* const text : {"a", "\U0001F600", "\u200C", "b"}) {
        press(*gui.window, 0, QString::fromUtf8(text));
    }
    EXPECT_EQ(password(), "a\U0001F600\u200Cb");
}

TEST_F(SettingsFieldTest, ChordsAndEscapeTypeNothing) {
    press(*gui.window, Qt::Key_B, "\x02", Qt::ControlModifier);
    press(*gui.window, Qt::Key_B, "b", Qt::MetaModifier);
    press(*gui.window, Qt::Key_B, "b", Qt::AltModifier);
    press(*gui.window, Qt::Key_Escape, "\x1b");
    EXPECT_EQ(password(), "");
}

TEST_F(SettingsFieldTest, InputMethodsCommitButSeeNothing) {
    QInputMethodEvent event;
    event.setCommitString(QString::fromUtf8("\u00e9"));
    QCoreApplication::sendEvent(field, &event);
    EXPECT_EQ(password(), "\u00e9");
    EXPECT_FALSE(field->inputMethodQuery(Qt::ImSurroundingText).isValid());
    EXPECT_TRUE(field->inputMethodQuery(Qt::ImHints).toInt() & Qt::ImhSensitiveData);
}

TEST_F(SettingsFieldTest, ClickPutsTheCaretBetweenBullets) {
    type("abc");
    click(*gui.window, field->mapToScene({10, field->height() / 2}));
    type("x");
    EXPECT_EQ(password(), "axbc");
}

TEST_F(SettingsFieldTest, AccessibilityTellsTheNameAndNeverTheText) {
    type("hunter2");
    turn();
    auto* object = QAccessible::queryAccessibleInterface(field);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->role(), QAccessible::EditableText);
    EXPECT_EQ(object->text(QAccessible::Name), "Exit Password");
    auto* wholeWindow = QAccessible::queryAccessibleInterface(gui.window.get());
    ASSERT_NE(wholeWindow, nullptr);
    const QString all = everythingReadable(wholeWindow);
    EXPECT_TRUE(all.contains("Exit Password"));
    EXPECT_FALSE(all.contains("hunter2"));
}

} // namespace tapalong
