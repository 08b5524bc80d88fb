# Samples are defined bit by bit: no multiply may be fused with an add unless the source says so.
# Vectorised in every build type, so that a debug build keeps up with the audio thread as well.
set_source_files_properties(render.cpp PROPERTIES COMPILE_OPTIONS "-O3;-ffp-contract=off")
