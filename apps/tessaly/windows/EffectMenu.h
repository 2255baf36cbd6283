#pragma once

#include <QWidget>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilterDescriptor.h>
#include <zelcore/Signals.h>

#include "OfferedEffects.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace tessaly {

/// A menu of the effects that can be added, by format and vendor, with a field to search in. The keyboard stays in the
/// field; the arrow keys choose meanwhile, Return picks, Escape closes. Main thread.
class EffectMenu final : public QWidget {
public:
    typedef boost::signal<void(const zelaudiofilterhost::AudioFilterDescriptor&)> PickedSignal;
    typedef boost::signal<void()> ScanSignal;

    explicit EffectMenu(QWidget* parent);

    /// Shows what the catalogue offers now, below `anchor` and within its screen.
    void PopUp(const QWidget& anchor);

    /// Fired when an effect was picked, after the menu has closed.
    PickedSignal& GetPickedSignal() { return mPicked; }
    /// Fired when there is nothing to offer and the user wants a scan.
    ScanSignal& GetScanSignal() { return mScan; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Connect();
    void Fill();
    QTreeWidgetItem* FindOrAddGroup(QTreeWidgetItem* parent, const QString& text);
    void Filter(const QString& text);
    bool FilterItem(QTreeWidgetItem* item, const QStringList& words);
    void ChooseFirst();
    void Step(int direction);
    void Announce(const QTreeWidgetItem* item);
    void Pick(QTreeWidgetItem* item);

    QLineEdit* mSearch;
    QTreeWidget* mTree;
    QLabel* mNothing;  ///< says why there is nothing
    QPushButton* mScanButton;
    std::vector<OfferedEffect> mEffects;
    PickedSignal mPicked;
    ScanSignal mScan;
};

}  // namespace tessaly
