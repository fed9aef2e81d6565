#pragma once

namespace Orbita {

class ImageCache;
class ImageStore;
class ItemEditors;
class RemoteActionSender;
class RunningApplications;
class Workspace;

/// What items need of the world. Borrowed: all of it outlives every item.
struct ItemServices {
    Workspace &workspace;
    RunningApplications &runningApplications;
    RemoteActionSender &toolkit;
    ImageCache &imageCache;
    ImageStore &imageStore;
    ItemEditors &editors;
};

} // namespace Orbita
