#include "app/zelqApplication.h"

#include <new>

bool zelqApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
        if (!outOfMemory_) {
            throw;
        }
    }
    try {
        outOfMemory_();
    } catch (const std::bad_alloc&) {
        // There is not even memory to say so.
    }
    return true;
}
