#pragma once

#include "app/RingWindowController.h"
#include "app/ToolkitLink.h"
#include "platform/PropertyList.h"
#include "platform/memory/MemoryDialogs.h"
#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemorySessionState.h"
#include "platform/memory/MemoryUrlHandler.h"
#include "platform/memory/MemoryUserNotifications.h"
#include "ring/ManualAnimationClock.h"
#include "ring/RenderedPictures.h"
#include "ring/RingWindow.h"
#include "support/MemoryDesktop.h"
#include "toolkit/VXSchemeCommunicationCenter.h"

#include <QCoreApplication>
#include <QDir>

#include <gtest/gtest.h>

namespace Orbita {

/// A desktop in memory with a ring window, and a clock that a test moves.
struct RingDesktop : MemoryDesktop {
    MemoryStage &stage = triggers.stage;
    MemoryBlurBehind blur;
    ManualAnimationClock clock;
    RenderedPictures pictures;
    MemoryScheduler scheduler;
    MemorySessionState session;
    RingWindow window{stage, blur};
    ControllerServices controllerServices{container.directories().container, settings,  defaults,      services,
                                          {stage, clock, pictures},          scheduler, notifications, session};

    MemoryUrlHandler urls;
    MemoryDialogs dialogs;
    VXSchemeCommunicationCenter center{urls, scheduler};
    ToolkitLink toolkitLink{{center, urls, workspace, dialogs, scheduler}, [this] {
                                return MenuItemArray::storedEntries(container.directories().container, defaults);
                            }};

    /// Makes the stored entries these alone.
    void storeEntries(const QVariantList &entries) const
    {
        QDir().mkpath(container.directories().container);
        EXPECT_TRUE(PropertyList::write(container.itemFile(), entries, PropertyList::Format::Xml));
    }
    /// Lets every animation run to its end and its owners hear of it.
    void settle()
    {
        clock.advance(AnimationClock::defaultDuration);
        clock.advance(AnimationClock::defaultDuration);
        QCoreApplication::sendPostedEvents();
    }
    [[nodiscard]] RingView &view() const { return *window.findChild<RingView *>(); }
};

} // namespace Orbita
