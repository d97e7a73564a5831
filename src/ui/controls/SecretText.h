#pragma once

#include <QList>
#include <QString>

#include <algorithm>

namespace tapalong {

/// The editing of one line of text: caret, selection, and the changes that keys make. Positions count user-perceived
/// characters, so that half an accent can neither be selected nor deleted.
class SecretText {
public:
    enum class Selecting : bool { no, yes };

    /// Replaces everything; the caret goes to the end.
    void setText(const QString& text);
    [[nodiscard]] const QString& text() const { return m_text; }

    [[nodiscard]] int length() const { return static_cast<int>(m_boundaries.size()) - 1; }
    [[nodiscard]] int caret() const { return m_caret; }
    [[nodiscard]] int selectionStart() const { return std::min(m_caret, m_anchor); }
    [[nodiscard]] int selectionEnd() const { return std::max(m_caret, m_anchor); }

    void moveTo(int position, Selecting selecting = Selecting::no);
    void moveLeft(Selecting selecting);
    void moveRight(Selecting selecting);
    void selectAll();

    /// In place of the selection. Characters that have no place on a line are left out.
    void insert(const QString& text);
    void backspace();
    void deleteForward();
    /// From the start to the caret: there are no words to be told apart behind bullets.
    void deleteToStart();

private:
    [[nodiscard]] bool hasSelection() const { return m_caret != m_anchor; }
    void replace(int from, int to, const QString& with);

    QString m_text;
    QList<qsizetype> m_boundaries{0}; ///< where characters begin in m_text, and its end
    int m_caret = 0;
    int m_anchor = 0;
};

} // namespace tapalong
