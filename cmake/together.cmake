# Several source files are compiled as one, which takes a third of the time: what they include is read once, and templates
# are made once. Files that use one name for different things in their unnamed namespaces, or include themselves, are
# compiled alone; they are listed here. If the compiler complains of a name that is defined twice, give one of the two
# another name, or list the smaller file.

# zucmtr_compile_alone(TARGET file...)
function(zucmtr_compile_alone target)
  if(TARGET ${target})
    get_target_property(folder ${target} SOURCE_DIR)
    foreach(file ${ARGN})
      get_filename_component(file ${file} ABSOLUTE BASE_DIR ${folder})
      list(APPEND files ${file})
    endforeach()
    set_source_files_properties(${files} TARGET_DIRECTORY ${target} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  endif()
endfunction()

# zucmtr_compile_by_folder(TARGET): the files of each folder that are in no group yet are a group.
function(zucmtr_compile_by_folder target)
  get_target_property(folder ${target} SOURCE_DIR)
  get_target_property(sources ${target} SOURCES)
  foreach(source ${sources})
    get_source_file_property(group ${folder}/${source} TARGET_DIRECTORY ${target} UNITY_GROUP)
    if(NOT group)
      get_filename_component(group ${source} DIRECTORY)
      set_source_files_properties(${folder}/${source} TARGET_DIRECTORY ${target} PROPERTIES UNITY_GROUP ${group})
    endif()
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()

zucmtr_compile_alone(zucmtr_objects recording/itemdecoder_vector.cpp writers/codetiles.cpp) # once for each instruction set
zucmtr_compile_alone(zu_analysis frequencytrack.cpp windowfit.cpp)
zucmtr_compile_alone(zu_catalogue details.cpp)
zucmtr_compile_alone(zu_comtrade configuration.cpp moment.cpp recordfiles.cpp)
zucmtr_compile_alone(zu_forms comtradewriter.cpp matvariables.cpp sampleclock.cpp timewindow.cpp)
zucmtr_compile_alone(zu_info recordingdata.cpp)
zucmtr_compile_alone(zu_sql sqlite.cpp)
zucmtr_compile_alone(zu_station linecourse.cpp linesimulation.cpp linesignals.cpp linetruth.cpp segments.cpp)
zucmtr_compile_alone(zu_validate cfgvalues.cpp datarules.cpp infrules.cpp)
zucmtr_compile_alone(zu_verify likeness.cpp ownrecord.cpp)
zucmtr_compile_alone(zucmtr_picture drawing/chart.cpp drawing/faultmarks.cpp drawing/statetracks.cpp)

zucmtr_compile_alone(analysis_tests faultkind_test.cpp quantities_test.cpp signals_test.cpp steadysignals_test.cpp
                     summary_test.cpp superimposed_test.cpp window_test.cpp faultsearch_test.cpp)
zucmtr_compile_alone(cli_tests choice_test.cpp linefile_test.cpp many_test.cpp memory_test.cpp putaway_test.cpp salvage_test.cpp)
zucmtr_compile_alone(comtrade_tests forgivendata_test.cpp mutations_test.cpp plainline_test.cpp samples_test.cpp written_test.cpp)
zucmtr_compile_alone(hostile_tests hostilefiles_test.cpp)
zucmtr_compile_alone(recording_tests badareas_test.cpp deltadecoder_test.cpp discretechannel_test.cpp)
zucmtr_compile_alone(service_tests exportedfunctions_test.cpp)
zucmtr_compile_alone(sql_tests sqlite_test.cpp)
zucmtr_compile_alone(station_tests stationnetwork_test.cpp)
zucmtr_compile_alone(writers_tests dat_records_test.cpp hdr_values_test.cpp)

set(alone core/module.cpp core/save.cpp)
zucmtr_compile_alone(zucmtr_python ${alone})
list(TRANSFORM alone PREPEND ${PROJECT_SOURCE_DIR}/python/)
zucmtr_compile_alone(zucmtr_python_debug ${alone})
zucmtr_compile_alone(zu_program archive/faultpicture.cpp archive/scribes.cpp watch/journalcopy.cpp watch/recorderstatus.cpp
                     watch/watch.cpp watch/watchinput.cpp watch/watchjournal.cpp watch/watchtrouble.cpp)

if(TARGET zu_program)
  zucmtr_compile_by_folder(zu_program)
endif()
