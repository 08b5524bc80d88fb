set(fadewell_pipewire_sources
    pipewire/Connection.cpp
    pipewire/DeviceLosses.cpp
    pipewire/MissingDefaults.cpp
    pipewire/DeviceProperties.cpp
    pipewire/DeviceTable.cpp
    pipewire/FrozenTime.cpp
    pipewire/Graph.cpp
    pipewire/GraphBindings.cpp
    pipewire/GraphRegistry.cpp
    pipewire/GraphVolumes.cpp
    pipewire/ListenerTable.cpp
    pipewire/Metadata.cpp
    pipewire/ParameterParsing.cpp
    pipewire/PipeWireHardware.cpp
    pipewire/PipeWireHardwareNodes.cpp
    pipewire/PipeWireHardwareTaps.cpp
    pipewire/ProcessPIDs.cpp
    pipewire/ProcessProperties.cpp
    pipewire/ProcessTable.cpp
    pipewire/Properties.cpp
    pipewire/StreamRules.cpp
    pipewire/StreamTargets.cpp
    pipewire/TransportRules.cpp
    pipewire/taps/ConverterWaker.cpp
    pipewire/taps/CycleKeeper.cpp
    pipewire/taps/Lobby.cpp
    pipewire/taps/LeftoverTaps.cpp
    pipewire/taps/RetiredTaps.cpp
    pipewire/taps/StandingTaps.cpp
    pipewire/taps/StartLevels.cpp
    pipewire/taps/Starts.cpp
    pipewire/taps/TapHandover.cpp
    pipewire/taps/TapNames.cpp
    pipewire/taps/TapOutage.cpp
    pipewire/taps/TapPermission.cpp
    pipewire/taps/TapProperties.cpp
    pipewire/taps/TapRender.cpp
    pipewire/taps/TapRouter.cpp
    pipewire/taps/TapStarts.cpp
    pipewire/taps/TapStreams.cpp
    pipewire/taps/TapStreamsControl.cpp
    pipewire/taps/Taps.cpp
    pipewire/taps/TargetJournal.cpp)
list(APPEND FADEWELL_LINUX_SOURCES ${fadewell_pipewire_sources})

# PipeWire's methods are macros full of C casts.
set_source_files_properties(${fadewell_pipewire_sources} PROPERTIES COMPILE_OPTIONS -Wno-old-style-cast)
