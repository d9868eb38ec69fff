# Effect execution: child processes, the stored files, links, the clipboard
# and browser detection.
find_package(Threads REQUIRED)
add_library(VelmarEffects STATIC
  ${CMAKE_CURRENT_LIST_DIR}/Subprocess.h ${CMAKE_CURRENT_LIST_DIR}/Subprocess.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Env.h ${CMAKE_CURRENT_LIST_DIR}/Env.cpp
  ${CMAKE_CURRENT_LIST_DIR}/OneShot.h
  ${CMAKE_CURRENT_LIST_DIR}/CommandLines.h
  ${CMAKE_CURRENT_LIST_DIR}/FileStore.h ${CMAKE_CURRENT_LIST_DIR}/FileStore.cpp
  ${CMAKE_CURRENT_LIST_DIR}/BrowserTable.h ${CMAKE_CURRENT_LIST_DIR}/BrowserTable.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DesktopEntry.h ${CMAKE_CURRENT_LIST_DIR}/DesktopEntry.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Links.h ${CMAKE_CURRENT_LIST_DIR}/Links.cpp
  ${CMAKE_CURRENT_LIST_DIR}/EffectRunner.h ${CMAKE_CURRENT_LIST_DIR}/EffectRunner.cpp)
target_include_directories(VelmarEffects PUBLIC ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(VelmarEffects PUBLIC VelmarCore Qt6::Core Qt6::Gui Threads::Threads)
