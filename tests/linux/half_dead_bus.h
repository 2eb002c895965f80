// A bus that answers what it is told to answer and is silent about everything else, as one that
// hangs at some moment. It serves in a thread of its own.
#pragma once

#include <filesystem>
#include <mutex>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gio/gio.h>

namespace tessellon {

class HalfDeadBus {
  public:
    /// Listens at `socket` and answers calls of those methods, with a text. Whoever comes is let
    /// in. Throws std::runtime_error when it cannot listen there.
    HalfDeadBus(const std::string& socket, std::set<std::string> answered)
        : answered_(std::move(answered)),
          context_(g_main_context_new()),
          loop_(g_main_loop_new(context_, FALSE)) {
        std::filesystem::remove(socket);
        g_main_context_push_thread_default(context_);
        char* const guid = g_dbus_generate_guid();
        server_ = g_dbus_server_new_sync(("unix:path=" + socket).c_str(), G_DBUS_SERVER_FLAGS_NONE,
                                         guid, nullptr, nullptr, nullptr);
        g_free(guid);
        g_main_context_pop_thread_default(context_);
        if (server_ == nullptr) {
            throw std::runtime_error("no bus can listen at " + socket);
        }
        g_signal_connect(server_, "new-connection", G_CALLBACK(accept), this);
        g_dbus_server_start(server_);
        thread_ = std::thread([this] {
            g_main_context_push_thread_default(context_);
            g_main_loop_run(loop_);
            // In the thread that waits for connections: the library loses what it holds for that
            // otherwise.
            g_dbus_server_stop(server_);
            while (g_main_context_iteration(context_, FALSE) != FALSE) {
            }
            g_main_context_pop_thread_default(context_);
        });
    }
    ~HalfDeadBus() {
        g_main_loop_quit(loop_);
        thread_.join();
        for (auto* const connection : connections_) {
            g_dbus_connection_close_sync(connection, nullptr, nullptr);
            g_object_unref(connection);
        }
        g_object_unref(server_);
        g_main_loop_unref(loop_);
        g_main_context_unref(context_);
    }
    HalfDeadBus(const HalfDeadBus&) = delete;
    HalfDeadBus& operator=(const HalfDeadBus&) = delete;

    /// How often somebody has called the method.
    std::size_t calls(const std::string& method) const {
        const std::lock_guard lock(mutex_);
        return calls_.count(method);
    }

  private:
    static gboolean accept(GDBusServer* /*server*/, GDBusConnection* connection, gpointer self) {
        auto& bus = *static_cast<HalfDeadBus*>(self);
        g_object_ref(connection);
        bus.connections_.push_back(connection);
        g_dbus_connection_add_filter(connection, receive, self, nullptr);
        return TRUE;
    }

    // In the library's own thread.
    static GDBusMessage* receive(GDBusConnection* connection, GDBusMessage* message,
                                 gboolean isIncoming, gpointer self) {
        if (isIncoming == FALSE) {
            return message;
        }
        if (g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
            static_cast<HalfDeadBus*>(self)->answer(connection, message);
        }
        g_object_unref(message);
        return nullptr;
    }

    void answer(GDBusConnection* connection, GDBusMessage* call) {
        const std::string method = g_dbus_message_get_member(call);
        {
            const std::lock_guard lock(mutex_);
            calls_.insert(method);
        }
        if (!answered_.contains(method)) {
            return;
        }
        GDBusMessage* const reply = g_dbus_message_new_method_reply(call);
        g_dbus_message_set_sender(reply, "org.freedesktop.DBus");
        g_dbus_message_set_body(reply, g_variant_new("(s)", ":1.1"));
        g_dbus_connection_send_message(connection, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       nullptr);
        g_object_unref(reply);
    }

    const std::set<std::string> answered_;
    mutable std::mutex mutex_;
    std::multiset<std::string> calls_;
    GMainContext* context_;
    GMainLoop* loop_;
    GDBusServer* server_ = nullptr;
    std::vector<GDBusConnection*> connections_;
    std::thread thread_;
};

}  // namespace tessellon
