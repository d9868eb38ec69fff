# The windowed application: unit tests, the delegate in-process, whole runs offscreen and on Xvfb.
find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Test DBus Network)

if(TARGET VelmarShell)
  add_executable(shell_tests ${CMAKE_CURRENT_LIST_DIR}/StoreTest.cpp ${CMAKE_CURRENT_LIST_DIR}/WindowFitTest.cpp ${CMAKE_CURRENT_LIST_DIR}/InstanceGuardTest.cpp
                 ${CMAKE_CURRENT_LIST_DIR}/ThemeTest.cpp ${CMAKE_CURRENT_LIST_DIR}/AutomationTest.cpp)
  target_link_libraries(shell_tests PRIVATE VelmarShell Qt6::Test GTest::gtest GTest::gtest_main)
  add_executable(shell_window_tests ${CMAKE_CURRENT_LIST_DIR}/AppDelegateTest.cpp)
  target_link_libraries(shell_window_tests PRIVATE VelmarShell Qt6::Test GTest::gtest)
  file(GLOB VELMAR_VIEW_TESTS CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/Views/*.cpp)
  add_executable(view_tests ${VELMAR_VIEW_TESTS} ${CMAKE_CURRENT_LIST_DIR}/EffectsTestSupport.cpp)
  target_include_directories(view_tests PRIVATE ${CMAKE_CURRENT_LIST_DIR}/Views ${CMAKE_CURRENT_LIST_DIR})
  target_compile_definitions(view_tests PRIVATE
    VELMAR_FAKE_GITHUB="${CMAKE_CURRENT_LIST_DIR}/fake_github/server.py")
  target_link_libraries(view_tests PRIVATE VelmarShell Qt6::Test Qt6::Network GTest::gtest)
  add_executable(desktop_tests ${CMAKE_CURRENT_LIST_DIR}/DesktopTest.cpp)
  target_link_libraries(desktop_tests PRIVATE VelmarShell Qt6::Test GTest::gtest)
  target_compile_definitions(desktop_tests PRIVATE
                             VELMAR_FAKE_PORTAL="${CMAKE_CURRENT_LIST_DIR}/fake_portal.py")
  foreach(target shell_tests shell_window_tests view_tests desktop_tests)
    gtest_discover_tests(${target} DISCOVERY_TIMEOUT 60 PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  endforeach()

  # Typing in the add field over 500 suggestions (bench/add_field_typing.sh).
  add_executable(add_field_bench ${CMAKE_SOURCE_DIR}/bench/add_field_typing.cpp)
  target_link_libraries(add_field_bench PRIVATE VelmarShell Qt6::Test)

  add_executable(png_probe ${CMAKE_CURRENT_LIST_DIR}/png_probe.cpp)
  target_link_libraries(png_probe PRIVATE Qt6::Gui)
  add_test(NAME shell_snapshots COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/SnapshotTest.sh
                                        $<TARGET_FILE:velmar> $<TARGET_FILE:png_probe>)
  add_test(NAME shell_placement COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/PlacementTest.sh
                                        $<TARGET_FILE:velmar> ${CMAKE_CURRENT_LIST_DIR}/x11win.py)
  add_test(NAME shell_drag COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/DragTest.sh $<TARGET_FILE:velmar>)
  add_test(NAME shell_quit COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/QuitTest.sh $<TARGET_FILE:velmar>)
  set_tests_properties(shell_snapshots shell_placement shell_drag shell_quit PROPERTIES TIMEOUT 120)

  # The desktop integration as a user meets it: the installed files and the
  # Debian package, one panel per home on Xvfb, "Auto" following a fake portal.
  add_test(NAME desktop_install COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/InstallTest.sh
                                        ${CMAKE_BINARY_DIR} $<TARGET_FILE:png_probe> ${PROJECT_VERSION})
  add_test(NAME desktop_single_instance COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/SingleInstanceTest.sh
           $<TARGET_FILE:velmar> ${CMAKE_CURRENT_LIST_DIR}/x11win.py ${PROJECT_SOURCE_DIR}/data/velmar.desktop)
  add_test(NAME desktop_portal COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/PortalTest.sh
           $<TARGET_FILE:velmar> $<TARGET_FILE:png_probe> ${CMAKE_CURRENT_LIST_DIR}/fake_portal.py)
  set_tests_properties(desktop_install desktop_single_instance desktop_portal PROPERTIES TIMEOUT 120)
endif()
