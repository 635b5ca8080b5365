#pragma once

#include <QApplication>
#include <functional>
#include <utility>

/// The application, which survives that there is no memory for an event.
class zelqApplication : public QApplication {
    Q_OBJECT

public:
    using QApplication::QApplication;

    /// `handler` is called when the handling of an event ended for want of memory, after what it
    /// held is free again. Without one the exception goes on.
    void setOutOfMemoryHandler(std::function<void()> handler) { outOfMemory_ = std::move(handler); }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    std::function<void()> outOfMemory_;
};
