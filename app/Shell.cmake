# The windowed application. VelmarShell holds everything but `main`, the QML
# screens and icons included, so tests link it; the executable is `main` and the headless entry.
add_library(VelmarShell STATIC
  ${CMAKE_CURRENT_LIST_DIR}/Store.h ${CMAKE_CURRENT_LIST_DIR}/Store.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Appearance.h ${CMAKE_CURRENT_LIST_DIR}/Appearance.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DebugEnv.h ${CMAKE_CURRENT_LIST_DIR}/DebugEnv.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DebugSend.h ${CMAKE_CURRENT_LIST_DIR}/DebugSend.cpp
  ${CMAKE_CURRENT_LIST_DIR}/DebugClick.h ${CMAKE_CURRENT_LIST_DIR}/DebugClick.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Snapshot.h ${CMAKE_CURRENT_LIST_DIR}/Snapshot.cpp
  ${CMAKE_CURRENT_LIST_DIR}/AppDelegate.h ${CMAKE_CURRENT_LIST_DIR}/AppDelegate.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/Theme.h ${CMAKE_CURRENT_LIST_DIR}/Views/Theme.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/PanelModel.h ${CMAKE_CURRENT_LIST_DIR}/Views/PanelModel.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/IconProvider.h ${CMAKE_CURRENT_LIST_DIR}/Views/IconProvider.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/DiffListModel.h ${CMAKE_CURRENT_LIST_DIR}/Views/DiffListModel.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/RepoGroup.h ${CMAKE_CURRENT_LIST_DIR}/Views/RepoGroup.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/PanelLists.h ${CMAKE_CURRENT_LIST_DIR}/Views/PanelLists.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/RepoDrag.h ${CMAKE_CURRENT_LIST_DIR}/Views/RepoDrag.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/RepoDragTracker.h ${CMAKE_CURRENT_LIST_DIR}/Views/RepoDragTracker.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/HitTest.h ${CMAKE_CURRENT_LIST_DIR}/Views/HitTest.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/ManageTexts.h ${CMAKE_CURRENT_LIST_DIR}/Views/ManageTexts.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/ByteCapValidator.h ${CMAKE_CURRENT_LIST_DIR}/Views/ByteCapValidator.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/BrowserIcons.h ${CMAKE_CURRENT_LIST_DIR}/Views/BrowserIcons.cpp
  ${CMAKE_CURRENT_LIST_DIR}/Views/PanelView.h ${CMAKE_CURRENT_LIST_DIR}/Views/PanelView.cpp
  ${CMAKE_CURRENT_LIST_DIR}/SingleInstance.h ${CMAKE_CURRENT_LIST_DIR}/SingleInstance.cpp
  ${CMAKE_CURRENT_LIST_DIR}/QuitSignals.h ${CMAKE_CURRENT_LIST_DIR}/QuitSignals.cpp
  ${CMAKE_CURRENT_LIST_DIR}/WindowFit.h ${CMAKE_CURRENT_LIST_DIR}/WindowFit.cpp
  ${CMAKE_CURRENT_LIST_DIR}/PortalSettings.h ${CMAKE_CURRENT_LIST_DIR}/PortalSettings.cpp)
target_include_directories(VelmarShell PUBLIC ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(VelmarShell PUBLIC VelmarCore VelmarEffects Qt6::Core Qt6::Gui Qt6::Qml
                      Qt6::Quick Qt6::DBus PRIVATE Qt6::Svg Qt6::Network)

# The screens and their icons travel with the library, so anything that links
# it (the executable, the in-process tests) can show the panel.
file(GLOB VELMAR_VIEW_FILES CONFIGURE_DEPENDS
  RELATIVE ${CMAKE_CURRENT_LIST_DIR}
  ${CMAKE_CURRENT_LIST_DIR}/Views/*.qml ${CMAKE_CURRENT_LIST_DIR}/Views/icons/*.svg)
qt_add_resources(VelmarShell "views" PREFIX "/velmar" BASE ${CMAKE_CURRENT_LIST_DIR}
                 FILES ${VELMAR_VIEW_FILES})

# The application icon, for the window; the installed copies come from data/.
qt_add_resources(VelmarShell "brand" PREFIX "/velmar" BASE ${PROJECT_SOURCE_DIR}/data
                 FILES ${PROJECT_SOURCE_DIR}/data/velmar.svg)

qt_add_executable(velmar ${CMAKE_CURRENT_LIST_DIR}/main.cpp
                  ${CMAKE_CURRENT_LIST_DIR}/HeadlessEntry.h ${CMAKE_CURRENT_LIST_DIR}/HeadlessEntry.cpp)
target_link_libraries(velmar PRIVATE VelmarShell)
include(GNUInstallDirs)
install(TARGETS velmar RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
