set(fadewell_pipewire_sources
    pipewire/Connection.cpp
    pipewire/DeviceProperties.cpp
    pipewire/DeviceTable.cpp
    pipewire/Graph.cpp
    pipewire/GraphBindings.cpp
    pipewire/GraphRegistry.cpp
    pipewire/GraphVolumes.cpp
    pipewire/ListenerTable.cpp
    pipewire/Metadata.cpp
    pipewire/ParameterParsing.cpp
    pipewire/PipeWireHardware.cpp
    pipewire/PipeWireHardwareTaps.cpp
    pipewire/ProcessPIDs.cpp
    pipewire/ProcessProperties.cpp
    pipewire/ProcessTable.cpp
    pipewire/Properties.cpp
    pipewire/StreamRules.cpp
    pipewire/StreamTargets.cpp
    pipewire/TransportRules.cpp
    pipewire/taps/RetiredTaps.cpp
    pipewire/taps/TapHandover.cpp
    pipewire/taps/TapProperties.cpp
    pipewire/taps/TapRender.cpp
    pipewire/taps/TapRouter.cpp
    pipewire/taps/TapStreams.cpp
    pipewire/taps/TapStreamsControl.cpp
    pipewire/taps/Taps.cpp)
list(APPEND FADEWELL_LINUX_SOURCES ${fadewell_pipewire_sources})

# PipeWire's methods are macros full of C casts.
set_source_files_properties(${fadewell_pipewire_sources} PROPERTIES COMPILE_OPTIONS -Wno-old-style-cast)
