#!/usr/bin/env bash
# What ./run, ./test and scripts/analyse start, with which arguments, and what becomes of failures. They run in a folder
# where all that they start is a stand-in, which prints its name and arguments and fails where these, and what the files
# that they name include, begin as $FAILING.
# usage: check-commands.sh SOURCE_DIR WORK_DIR
set -euo pipefail
rm -rf "$2"
mkdir -p "$2"/{bin,scripts,build,foundation,math,effects,looks,jni,headless,commandline,gallery,bench}
cp "$1"/{run,test} "$2"
cp "$1/scripts/analyse" "$2/scripts"
cd "$2"
touch jni/{a..m}.cpp build/compile_commands.json # one more than heaps
for program in bin/{cmake,ctest,python3,clang-tidy-14,cppcheck} scripts/{install-dependencies,build-{web,phone-drivers}} \
  build/tidalume-{gallery,viewer,bench,phones}; do
  install /dev/stdin "$program" <<'END'
#!/bin/sh
case "${0##*/} $1" in
  "ctest --help") echo "  -R <regex>" ;;
  "python3 -c") echo 127.0.0.2 ;;
  *)
    line=+${0##*/}
    for word; do line="$line $(echo "$word" | tr ' ' _)"; done # so that one word of several shows
    echo "$line" | sed "s#$PWD#.#g; s/ --parallel [0-9]*//" ;;
esac
case "${0##*/} $* $(grep -hs '#include' -- "$@")" in $FAILING*) exit 1 ;; esac
END
done
export PATH=$PWD/bin:$PATH FAILING=none
unset CI

failed=0
# Status, command line, and a pattern of all that it starts and of the line that says why not.
while IFS='|' read -r status command pattern; do
  found=0
  output=$(bash -c "$command" </dev/null 2>&1) || found=$?
  started=$(sed -n 's/^+//p; /^[a-z.\/]*: /p; s/^Open \([^ ]*\).*/\1/p' <<<"$output" | tr '\n' ';')
  # shellcheck disable=SC2053 # a pattern
  if [[ $found != "$status" || $started != $pattern ]]; then
    printf 'check-commands: %s: status %s instead of %s, and it starts or says\n%s\ninstead of\n%s\n' \
      "$command" "$found" "$status" "${started//;/$'\n'}" "${pattern//;/$'\n'}" >&2
    failed=1
  fi
done <<'END'
0|./run -h && ./run --help|tidalume-gallery --help;tidalume-gallery --help;
0|./run --scene pond --seed 2|install-dependencies --basic;cmake --build --preset release --target tidalume-gallery;tidalume-gallery --scene pond --seed 2;
0|./run --live --scene pond|install-dependencies --basic;cmake --build --preset release --target tidalume-viewer;tidalume-viewer --scene pond;
0|./run --bench --quick|install-dependencies --basic;cmake --build --preset release --target tidalume-bench;tidalume-bench --quick;
0|./run --phones|build-phone-drivers;install-dependencies --basic;cmake --build --preset release --target tidalume-phones;tidalume-phones --out ./out/phones;
0|./run --web 1|install-dependencies;build-web;http://127.0.0.1:1/;python3 -m http.server --bind 127.0.0.1 --directory ./out/web 1;
0|./run --web --lan 08000|install-dependencies;build-web;http://127.0.0.2:08000/;python3 -m http.server --bind 127.0.0.2 --directory ./out/web 08000;
2|./run --web 0|./run: --web: "0" is not a port from 1 to 65535;
2|./run --web --lan 65536|./run: --web: "65536" is not a port*;
2|./run --web eighty|./run: --web: "eighty" is not a port*;
2|./run --web 8000 --lan 9000|./run: --web: only a port and --lan may follow, not "8000 --lan 9000";
2|./run --phones x|./run: --phones: nothing may follow, not "x";
1|FAILING='cmake --build' ./run|install-dependencies --basic;cmake*;
1|FAILING='build-web' ./run --web 1|install-dependencies;build-web;
0|./test -R Name|install-dependencies;cmake --preset release*;cmake --build --preset release;cmake --preset fuzz*;cmake --build --preset fuzz;ctest --preset release --label-exclude long|all-drivers -R Name;ctest --preset fuzz --label-exclude long|all-drivers -R Name;
2|./test --speed|install-dependencies;./test: "--speed" is an option neither of ./test nor of ctest*;
2|./test -R Name --long|./test: --all-drivers and --long come first*;
0|./test --all-drivers|*;ctest --preset release --label-exclude long;ctest --preset fuzz --label-exclude long;
0|./test --long|*;ctest --preset tsan --label-exclude long;ctest*--label-regex long;ctest*--label-regex long;
1|FAILING='ctest --preset release' ./test|*;ctest --preset fuzz*
1|FAILING='ctest --preset fuzz' ./test|*;ctest --preset fuzz*
1|FAILING='ctest --preset fuzz --label-regex' ./test --long|*
2|scripts/analyse absent|analyse: one build folder is expected*;
0|scripts/analyse|*clang-tidy-14 -p ./build * jni/b.cpp;*cppcheck*;
1|FAILING='clang-tidy-14 *jni/a.cpp' scripts/analyse|*clang-tidy-14 -p ./build * jni/a.cpp;*cppcheck*
1|FAILING='clang-tidy-14 *jni/m.cpp' scripts/analyse|*clang-tidy-14 -p ./build * jni/m.cpp;*cppcheck*
1|FAILING=cppcheck scripts/analyse|*
END
exit $failed
