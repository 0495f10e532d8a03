#pragma once
#include <QSet>

/// The numbers of the panes in which a document is shown. They begin at 1; that of a closed pane is given again.
class PaneNumbers
{
public:
    /// The lowest number that no pane has.
    int take()
    {
        int number = 1;
        while (m_taken.contains(number))
            ++number;
        m_taken.insert(number);
        return number;
    }
    void giveBack(int number) { m_taken.remove(number); }

private:
    QSet<int> m_taken;
};
