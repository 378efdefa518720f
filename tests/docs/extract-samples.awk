# Takes the marked code blocks out of Markdown files. A block is marked by a comment on the line before it:
#   <!-- file: NAME -->   a whole file                       -> OUT/files/NAME
#   <!-- run: STEP -->    commands                           -> OUT/commands/STEP
#   <!-- draws: NAME -->  Java statements that draw          -> OUT/fragments/NAME
#   <!-- from: PATH -->   an excerpt of a file of the project -> OUT/excerpts/N, whose first line is PATH
#   <!-- android: NAME -->   a file that is compiled by tests/android -> OUT/android/NAME
#   <!-- not run: WHY --> nothing
# Prints each block that has no marker and is not plain text.
# usage: awk -v out=OUT -f extract-samples.awk FILE...

function fail(message) { print FILENAME ":" FNR ": " message; failed = 1 }

/^```/ && !inside {
    inside = 1
    target = ""
    if (match(marker, /^<!-- (file|run|draws|from|android): .* -->$/)) {
        split(marker, words, " ")
        kind = substr(words[2], 1, length(words[2]) - 1)
        name = substr(marker, length("<!-- " kind ": ") + 1)
        name = substr(name, 1, length(name) - length(" -->"))
        if (kind == "file") target = out "/files/" name
        if (kind == "run") target = out "/commands/" name
        if (kind == "android") target = out "/android/" name
        if (kind == "draws") target = out "/fragments/" name
        if (kind == "from") {
            target = out "/excerpts/" ++excerpts
            print name > target
        } else if (target in seen) fail("a second " kind " " name)
        seen[target] = 1
        printf "" >> target
    } else if ($0 !~ /^```text$/ && marker !~ /^<!-- not run: .+ -->$/) fail("a block without a marker")
    next
}
/^```/ { inside = 0; marker = ""; if (target) close(target); next }
inside && target { print >> target }
!inside { marker = $0 }
END { exit failed }
