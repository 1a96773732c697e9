# A host that finds the packages that we use, before and after ours, in a child directory, and ours twice.
include(${CMAKE_CURRENT_LIST_DIR}/Run.cmake)
install_moved()
write_front_page_program()
foreach(order IN ITEMS BEFORE=jsoncpp AFTER=jsoncpp CHILD=jsoncpp
        BEFORE=OpenCASCADE AFTER=OpenCASCADE CHILD=OpenCASCADE CHILD=mechanism)
  run(${configure_consumer} -B ${WORK_DIR}/${order} -D${order})
endforeach()
# Once built, to see that the targets still carry all that a program needs.
run(${configure_consumer} -B ${WORK_DIR}/all -DBEFORE=jsoncpp -DAFTER=mechanism -DCHILD=mechanism)
build_consumer(${WORK_DIR}/all)
