#pragma once

#include <QAbstractTableModel>
#include <QStringList>

namespace zelui {

class TreeClient;

/// The rows of a tree as Qt's views and screen readers ask for them. Holds no row: how many there are is what the
/// views were told last, and what is in them the client says.
class TreeModel final : public QAbstractTableModel {
public:
    TreeModel(QObject& parent, TreeClient& client);
    void LetGoOfClient() { mClient = nullptr; }

    /// Tells the views what there is now; with `areOthers` what is in the rows has changed.
    void Sync(bool areOthers);

    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void SyncColumns();
    void SyncRows();

    TreeClient* mClient;
    int mRows = 0;
    QStringList mTitles;
};

}  // namespace zelui
