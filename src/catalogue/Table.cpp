// Table: storage of a fixed-size table of strings, grown row by row as values are stored.
#include "catalogue/Table.h"

#include <utility>

namespace ombrel::catalogue {

namespace {

const std::string kEmpty;

} // namespace

Table::Table(int maxRows, int columns)
    : m_maxRows(maxRows > 0 ? maxRows : 0)
    , m_columns(columns > 0 ? columns : 0)
{
}

const std::string& Table::at(int row, int column) const
{
    if (row < 1 || row > m_maxRows || column < 1 || column > m_columns)
        return kEmpty;
    size_t cell
        = static_cast<size_t>(row - 1) * static_cast<size_t>(m_columns) + static_cast<size_t>(column - 1);
    return cell < m_cells.size() ? m_cells[cell] : kEmpty;
}

void Table::set(int row, int column, std::string value)
{
    if (row < 1 || row > m_maxRows || column < 1 || column > m_columns)
        return;
    size_t width = static_cast<size_t>(m_columns);
    size_t cell = static_cast<size_t>(row - 1) * width + static_cast<size_t>(column - 1);
    if (cell >= m_cells.size()) {
        // An empty value needs no room: an unstored cell already reads as empty.
        if (value.empty())
            return;
        m_cells.resize(static_cast<size_t>(row) * width);
    }
    m_cells[cell] = std::move(value);
}

void Table::clear()
{
    m_cells.clear();
    m_cells.shrink_to_fit();
}

int Table::length() const
{
    int stored = m_columns > 0 ? static_cast<int>(m_cells.size() / static_cast<size_t>(m_columns)) : 0;
    int row = 1;
    while (row <= stored && !at(row, 1).empty())
        ++row;
    return row - 1;
}

} // namespace ombrel::catalogue
