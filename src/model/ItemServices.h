#pragma once

namespace Orbita {

class DraftStore;
class FileLookup;
class ImageCache;
class ImageStore;
class ItemEditors;
class Notices;
class RemoteActionSender;
class RunningApplications;
class Workspace;

/// What items need of the world. Borrowed: all of it outlives every item.
struct ItemServices {
    Workspace &workspace;
    FileLookup &files;
    RunningApplications &runningApplications;
    RemoteActionSender &toolkit;
    ImageCache &imageCache;
    ImageStore &imageStore;
    DraftStore &drafts;
    ItemEditors &editors;
    Notices &notices;
};

} // namespace Orbita
