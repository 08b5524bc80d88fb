#pragma once

#include <csignal>
#include <string>

namespace fadewell::integration {

/// The programs of a private session, by the names of their files in its folder.
inline constexpr auto soundServer = "pipewire";
inline constexpr auto sessionManager = "wireplumber";
inline constexpr auto pulseServer = "pipewire-pulse";

/// Sends a signal to a program of the session that this process is in.
void signalProgram(const std::string& name, int number);

/// Ends a program and returns when it has gone; the session manager goes with the server by itself.
/// Does nothing when it isn't running. Throws std::runtime_error when it stays.
void endProgram(const std::string& name, int signal = SIGTERM);

/// Starts a program that has ended. Waits for nothing but the server's answer, which the others
/// need to live; the session manager gets its outputs and its microphone anew, as real hardware
/// does.
void startProgram(const std::string& name);

/// Waits until the server, the session manager and the Pulse server answer and the default output
/// is there. Throws std::runtime_error when that takes too long.
void awaitSession();

/// Plugs the session's own outputs and its microphone in again, those of them that are gone.
void addMissingDevices();
/// Plugs an output in that lasts until it is removed, the session manager ends or the server does.
void addOutput(const std::string& name, const std::string& description);
/// Unplugs an output.
void removeOutput(const std::string& name);
/// What a user does who chooses another default output.
void chooseDefaultOutput(const std::string& name);

} // namespace fadewell::integration
