cmake_minimum_required(VERSION 3.22)
# An arrow that points up: cv_check_uses() must stop here.
include(${ROOMS})
cv_check_uses(toolkit framework)
