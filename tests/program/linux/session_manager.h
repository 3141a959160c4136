#pragma once

#include "tests/support/process.h"

#include <X11/ICE/ICElib.h>
#include <X11/ICE/ICEutil.h>
#include <X11/SM/SMlib.h>
#include <cstdlib>
#include <memory>

namespace quorvane::test {

// A session manager in the test's own process. Clients find it by Address(), in SESSION_MANAGER.
class SessionManager {
  public:
    SessionManager() {
        char error[256] = "";
        IceSetIOErrorHandler([](IceConn) {}); // a client that is gone ends no test
        char vendor[] = "test";
        char release[] = "1";
        SmsInitialize(vendor, release, TakeClient, this, AllowHost, sizeof error, error);
        IceListenForConnections(&listenerCount_, &listeners_, sizeof error, error);
        char* address = IceComposeNetworkIdList(listenerCount_, listeners_);
        address_ = address ? address : "";
        std::free(address);
        for (int i = 0; i < listenerCount_; ++i)
            IceSetHostBasedAuthProc(listeners_[i], AllowHost);
    }
    ~SessionManager() {
        if (client_) {
            const IceConn connection = SmsGetIceConnection(client_);
            SmsCleanUp(client_);
            IceSetShutdownNegotiation(connection, False);
            IceCloseConnection(connection);
        }
        IceFreeListenObjs(listenerCount_, listeners_);
    }
    SessionManager(const SessionManager&) = delete;
    SessionManager& operator=(const SessionManager&) = delete;

    const std::string& Address() const { return address_; }

    // Serves clients until one has registered.
    bool WaitForClient() {
        return WaitFor([this] { return Serve(), registered_; });
    }
    // Logs off: asks the client to save, and when it has, to die.
    bool LogOff() {
        saved_ = false;
        SmsSaveYourself(client_, SmSaveBoth, True, SmInteractStyleNone, False);
        if (!WaitFor([this] { return Serve(), saved_; })) return false;
        SmsSaveComplete(client_);
        SmsDie(client_);
        return true;
    }
    void Serve() {
        std::vector<pollfd> waits;
        for (int i = 0; i < listenerCount_; ++i)
            waits.push_back({IceGetListenConnectionNumber(listeners_[i]), POLLIN, 0});
        for (const IceConn connection : connections_)
            waits.push_back({IceConnectionNumber(connection), POLLIN, 0});
        if (poll(waits.data(), waits.size(), 5) <= 0) return;
        const std::size_t listeners = static_cast<std::size_t>(listenerCount_);
        IceConn gone = nullptr;
        for (std::size_t i = 0; i < waits.size(); ++i) {
            if ((waits[i].revents & POLLIN) == 0) continue;
            if (i < listeners) {
                IceAcceptStatus status = IceAcceptSuccess;
                if (const IceConn connection = IceAcceptConnection(listeners_[i], &status))
                    connections_.push_back(connection);
            } else if (IceProcessMessages(connections_[i - listeners], nullptr, nullptr) !=
                       IceProcessMessagesSuccess) {
                gone = connections_[i - listeners];
            }
        }
        std::erase(connections_, gone);
    }

  private:
    static Bool AllowHost(char*) { return True; }
    static void FreeName(char* name) { std::free(name); }

    template<typename Item, void (*Free)(Item*)>
    static void FreeAll(SmsConn, SmPointer, int count, Item** items) {
        for (int i = 0; i < count; ++i)
            Free(items[i]);
        std::free(items);
    }
    static Status Register(SmsConn client, SmPointer self, char* previous) {
        if (previous) return 0; // a session of which nothing is known
        const std::unique_ptr<char, decltype(&std::free)> id(SmsGenerateClientID(client), std::free);
        SmsRegisterClientReply(client, id.get());
        SmsSaveYourself(client, SmSaveLocal, False, SmInteractStyleNone, False);
        static_cast<SessionManager*>(self)->registered_ = true;
        return 1;
    }
    static void HasSaved(SmsConn client, SmPointer self, Bool) {
        auto& own = *static_cast<SessionManager*>(self);
        if (!own.first_) {
            own.saved_ = true;
            return;
        }
        own.first_ = false; // of the save that a new client begins with
        SmsSaveComplete(client);
    }

    static Status TakeClient(SmsConn connection, SmPointer self, unsigned long* mask, SmsCallbacks* callbacks,
                             char**) {
        static_cast<SessionManager*>(self)->client_ = connection;
        *mask = SmsRegisterClientProcMask | SmsInteractRequestProcMask | SmsInteractDoneProcMask |
                SmsSaveYourselfRequestProcMask | SmsSaveYourselfP2RequestProcMask |
                SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask | SmsSetPropertiesProcMask |
                SmsDeletePropertiesProcMask | SmsGetPropertiesProcMask;
        *callbacks = {};
        callbacks->register_client = {Register, self};
        callbacks->interact_request = {[](SmsConn client, SmPointer, int) { SmsInteract(client); }, self};
        callbacks->interact_done = {[](SmsConn, SmPointer, Bool) {}, self};
        callbacks->save_yourself_request = {[](SmsConn, SmPointer, int, Bool, int, Bool, Bool) {}, self};
        callbacks->save_yourself_phase2_request = {
            [](SmsConn client, SmPointer) { SmsSaveYourselfPhase2(client); }, self};
        callbacks->save_yourself_done = {HasSaved, self};
        callbacks->close_connection = {
            [](SmsConn, SmPointer, int count, char** reasons) { SmFreeReasons(count, reasons); }, self};
        callbacks->set_properties = {FreeAll<SmProp, SmFreeProperty>, self};
        callbacks->delete_properties = {FreeAll<char, FreeName>, self};
        callbacks->get_properties = {
            [](SmsConn client, SmPointer) { SmsReturnProperties(client, 0, nullptr); }, self};
        return 1;
    }

    int listenerCount_ = 0;
    IceListenObj* listeners_ = nullptr;
    std::vector<IceConn> connections_;
    std::string address_;
    SmsConn client_ = nullptr;
    bool registered_ = false;
    bool first_ = true;
    bool saved_ = false;
};

} // namespace quorvane::test
