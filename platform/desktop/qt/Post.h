// Things to be done as events of their own, behind what is being done now.
#pragma once

#include <QObject>
#include <functional>

namespace tessaly::qt {

// Has `action` done when the event loop comes to it, unless `object` is gone by then.
inline void Post([[maybe_unused]] QObject& object, [[maybe_unused]] const std::function<void()>& action) {
#ifndef __clang_analyzer__ // it does not see that Qt's event owns and frees the action
    QMetaObject::invokeMethod(&object, action, Qt::QueuedConnection);
#endif
}

} // namespace tessaly::qt
