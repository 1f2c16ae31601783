// Table: a fixed-size table of strings with rows and columns counted from 1. Row 0 and column 0
// hold nothing; an empty string is the absence of a value, and the first row whose column 1 is
// empty ends the list. Writes outside the table's size are ignored, so a hand-made file can never
// make it grow past its limit.
#pragma once

#include <string>
#include <vector>

namespace ombrel::catalogue {

class Table {
public:
    Table(int maxRows, int columns);

    // The value, or "" outside the table or where nothing was stored.
    const std::string& at(int row, int column) const;
    // Stores a value; ignored outside rows 1..maxRows and columns 1..columns.
    void set(int row, int column, std::string value);
    // Empties every row.
    void clear();

    int maxRows() const { return m_maxRows; }
    int columns() const { return m_columns; }
    // Rows from 1 up to the first whose column 1 is empty.
    int length() const;

private:
    int m_maxRows;
    int m_columns;
    std::vector<std::string> m_cells; // grown on demand, row-major, rows 1.. only
};

} // namespace ombrel::catalogue
