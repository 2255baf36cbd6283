#include "TreeModel.h"

#include "TreeClient.h"

namespace zelui {

TreeModel::TreeModel(QObject& parent, TreeClient& client) : QAbstractTableModel(&parent), mClient(&client) {}

void TreeModel::Sync(bool areOthers) {
    if (mClient == nullptr) return;
    SyncColumns();
    SyncRows();
    if (areOthers && mRows > 0 && !mTitles.isEmpty())
        dataChanged(index(0, 0, QModelIndex()), index(mRows - 1, columnCount(QModelIndex()) - 1, QModelIndex()));
}

void TreeModel::SyncColumns() {
    QStringList titles;
    for (int i = 0; i < mClient->GetColumnCount(); ++i) titles.append(mClient->GetTitle(i));
    if (titles == mTitles) return;
    const int former = static_cast<int>(mTitles.size());
    const int count = static_cast<int>(titles.size());
    if (count > former) {
        beginInsertColumns(QModelIndex(), former, count - 1);
        mTitles = titles;
        endInsertColumns();
    } else if (count < former) {
        beginRemoveColumns(QModelIndex(), count, former - 1);
        mTitles = titles;
        endRemoveColumns();
    }
    mTitles = titles;
    if (count > 0) headerDataChanged(Qt::Horizontal, 0, count - 1);
}

void TreeModel::SyncRows() {
    const int count = mClient->GetRowCount();
    if (count > mRows) {
        beginInsertRows(QModelIndex(), mRows, count - 1);
        mRows = count;
        endInsertRows();
    } else if (count < mRows) {
        beginRemoveRows(QModelIndex(), count, mRows - 1);
        mRows = count;
        endRemoveRows();
    }
}

int TreeModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : mRows; }

int TreeModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(mTitles.size());
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
    if (mClient == nullptr || !index.isValid()) return QVariant();
    if (role == Qt::DisplayRole) return mClient->GetText(index.row(), index.column());
    if (role != Qt::CheckStateRole) return QVariant();
    const std::optional<bool> isChecked = mClient->GetCheckState(index.row(), index.column());
    if (!isChecked) return QVariant();
    return static_cast<int>(*isChecked ? Qt::Checked : Qt::Unchecked);
}

QVariant TreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool exists = orientation == Qt::Horizontal && section >= 0 && section < mTitles.size();
    return exists && role == Qt::DisplayRole ? QVariant(mTitles[section]) : QVariant();
}

}  // namespace zelui
