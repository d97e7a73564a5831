#include "ui/controls/SecretText.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace tapalong {

namespace {

QList<qsizetype> boundariesOf(const QString& text) {
    QList<qsizetype> boundaries{0};
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    while (finder.toNextBoundary() > 0) {
        boundaries.append(finder.position());
    }
    return boundaries;
}

QString withoutControls(QString text) {
    text.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    return text;
}

} // namespace

void SecretText::setText(const QString& text) {
    m_text = text;
    m_boundaries = boundariesOf(m_text);
    moveTo(length());
}

void SecretText::moveTo(int position, Selecting selecting) {
    m_caret = std::clamp(position, 0, length());
    if (selecting == Selecting::no) {
        m_anchor = m_caret;
    }
}

void SecretText::moveLeft(Selecting selecting) {
    const bool collapses = hasSelection() && selecting == Selecting::no;
    moveTo(collapses ? selectionStart() : m_caret - 1, selecting);
}

void SecretText::moveRight(Selecting selecting) {
    const bool collapses = hasSelection() && selecting == Selecting::no;
    moveTo(collapses ? selectionEnd() : m_caret + 1, selecting);
}

void SecretText::selectAll() {
    m_anchor = 0;
    m_caret = length();
}

void SecretText::insert(const QString& text) {
    replace(selectionStart(), selectionEnd(), withoutControls(text));
}

void SecretText::backspace() {
    if (hasSelection()) {
        insert({});
    } else if (m_caret > 0) {
        replace(m_caret - 1, m_caret, {});
    }
}

void SecretText::deleteForward() {
    if (hasSelection()) {
        insert({});
    } else if (m_caret < length()) {
        replace(m_caret, m_caret + 1, {});
    }
}

void SecretText::deleteToStart() {
    replace(0, selectionEnd(), {});
}

void SecretText::replace(int from, int to, const QString& with) {
    const auto begin = m_boundaries[from];
    const auto end = begin + with.size();
    m_text.replace(begin, m_boundaries[to] - begin, with);
    m_boundaries = boundariesOf(m_text);
    // An accent typed after a letter becomes one character with it: the caret goes behind both.
    const auto behind = std::lower_bound(m_boundaries.begin(), m_boundaries.end(), end);
    moveTo(static_cast<int>(behind - m_boundaries.begin()));
}

} // namespace tapalong
