// Per-thread storage for the free instance operations of an action.
//
// An instance operation is a plain function that receives only the
// instance, the arguments and the filter. When it needs more of the running
// call (the ICTI handler, the group being visited), the action's execute
// puts it into a slot before delegating, and the operation reads it back.
// Every schema thread has its own value, so threads never see each other's
// pointers, and each Tag type has its own slot:
//
//   struct RenameMoTypeHandler;  // any type, may stay incomplete
//   using HandlerSlot = ThreadSlot<RenameMoTypeHandler, IctiHandlerIf*>;
//
//   bool RenameMoTypeAction::execute(IctiHandlerIf* h, InstanceGroupIf* g, ActionArgumentsIf& a) {
//     HandlerSlot::Scope keep(h);
//     return UpgradeAction::execute(h, g, a);
//   }
//   bool renameInstance(InstanceIf& i, ActionArgumentsIf& a, FilterIf& f) {
//     IctiHandlerIf* handler = HandlerSlot::get();
//     ...
//   }
//
// A Scope restores the previous value when it ends, so nested or repeated
// calls leave no stale pointer behind.

#ifndef VOSK_XML_THREAD_SLOT_H
#define VOSK_XML_THREAD_SLOT_H

template <typename Tag, typename T>
class ThreadSlot {
 public:
  static T get() { return value(); }
  static void set(T newValue) { value() = newValue; }

  class Scope {
   public:
    explicit Scope(T newValue) : previous_(value()) { value() = newValue; }
    ~Scope() { value() = previous_; }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    T previous_;
  };

  ThreadSlot() = delete;

 private:
  static T& value() {
    thread_local T slot{};
    return slot;
  }
};

#endif
