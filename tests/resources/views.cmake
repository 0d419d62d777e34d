# The view descriptions are data, too: one CTest case for each of the classes of view_lint.py.

foreach(case Forms Lint)
  add_test(NAME resources.views.${case}
    COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_LIST_DIR}/view_lint.py ${case})
  set_tests_properties(resources.views.${case} PROPERTIES TIMEOUT 60)
endforeach()
