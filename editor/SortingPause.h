#pragma once

#include <QTableWidget>

/// Keeps the rows of a table in their places while it lives. What was changed meanwhile is sorted
/// at its end, if the table sorted before.
class SortingPause
{
public:
    explicit SortingPause(QTableWidget* table)
        : m_table(table)
        , m_wasOn(table->isSortingEnabled())
    {
        m_table->setSortingEnabled(false);
    }
    ~SortingPause() { m_table->setSortingEnabled(m_wasOn); }
    SortingPause(const SortingPause&) = delete;
    SortingPause& operator=(const SortingPause&) = delete;

private:
    QTableWidget* m_table; // not owned
    bool m_wasOn;
};
