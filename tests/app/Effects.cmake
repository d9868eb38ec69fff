# Tests of effect execution: child processes, files, links and browsers, and
# the real gh against a fake GitHub server on the loopback interface.
if(TARGET VelmarEffects)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Test)
  set(fake_github VELMAR_FAKE_GITHUB="${CMAKE_CURRENT_LIST_DIR}/fake_github/server.py")
  add_executable(effects_tests EffectsTestMain.cpp EffectsTestSupport.h EffectsTestSupport.cpp
    SubprocessTest.cpp EffectRunnerTest.cpp LinksTest.cpp GhIntegrationTest.cpp
    FileStoreTest.cpp)
  target_link_libraries(effects_tests PRIVATE VelmarEffects Qt6::Test GTest::gtest)
  target_compile_definitions(effects_tests PRIVATE ${fake_github})
  gtest_discover_tests(effects_tests DISCOVERY_TIMEOUT 60
                       PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT 120)

  # Times a refresh of ten repositories against the fake server; run by
  # bench/refresh_ten.sh, not by ctest.
  add_executable(refresh_bench ${CMAKE_SOURCE_DIR}/bench/refresh_ten.cpp EffectsTestSupport.cpp)
  target_include_directories(refresh_bench PRIVATE ${CMAKE_CURRENT_LIST_DIR})
  target_link_libraries(refresh_bench PRIVATE VelmarEffects Qt6::Test)
  target_compile_definitions(refresh_bench PRIVATE ${fake_github})
endif()
