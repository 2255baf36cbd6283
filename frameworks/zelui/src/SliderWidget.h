#pragma once

#include <optional>
#include <set>

#include <QSlider>

namespace zelui {

/// A slider that knows nothing of values: it turns what the user does with mouse, keys and wheel into the steps of
/// gestures, in positions from 0 (the lower end) to 1, and shows a position.
class SliderWidget final : public QSlider {
public:
    /// Whose slider it is. Each call may run the host's code, which may delete all there is.
    class Client {
    public:
        virtual double GetPosition() const = 0;
        /// For screen readers: the value and its limits, in the units of the program.
        virtual double GetValue() const = 0;
        virtual double GetMinimum() const = 0;
        virtual double GetMaximum() const = 0;

        virtual void BeginGesture() = 0;
        /// Moves to a position, below 0 and above 1 to the ends; nothing without a gesture.
        virtual void MoveTo(double position) = 0;
        virtual void MoveBy(double distance) = 0;
        virtual void FinishGesture() = 0;
        /// Ends the gesture with the value from before it.
        virtual void RevertGesture() = 0;
        /// Ends the gesture without the user: what it is called from must not run the host's code.
        virtual void InterruptGesture() = 0;
        /// Whole gestures.
        virtual void StepBy(double distance) = 0;
        virtual void SetByUser(double value) = 0;

    protected:
        ~Client() = default;
    };

    SliderWidget(QWidget& parent, Client& client, Qt::Orientation orientation, bool reversed);

    /// Null once the client has gone.
    Client* GetClient() const { return mClient; }
    void LetGoOfClient();

    /// Shows the client's position.
    void ShowPosition();
    /// Whether the user holds it, by mouse or key.
    bool IsHeld() const { return mDrag.has_value() || !mHeldKeys.empty(); }
    /// Whether the key does something here.
    bool UsesKey(const QKeyEvent& key) const;

protected:
    void initStyleOption(QStyleOptionSlider* option) const override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// The mouse has the handle. Movements count from an anchor, so that nothing jumps when Shift changes their scale.
    struct Drag {
        double anchorPosition;
        double anchorPixel;
        double lastPixel;
        bool fine;
    };
    /// Where the handle can be, in pixels along the slider.
    struct Track {
        double start;
        double length;
        double handleLength;
        bool upsideDown;

        double GetPosition(double pixel) const;
        double GetDistance(double pixels) const;
    };

    double Along(const QPointF& point) const;
    Track GetTrack() const;
    QRect GetHandle() const;
    double GetDragPosition(const Drag& drag, double pixel) const;
    std::optional<double> GetStep(int key, bool fine) const;
    void Grab(const Drag& drag);
    void LetGo();
    bool FinishKeys();
    void Interrupt();

    Client* mClient;
    std::optional<Drag> mDrag;
    std::set<int> mHeldKeys;
    int mWheelRest = 0;
};

}  // namespace zelui
