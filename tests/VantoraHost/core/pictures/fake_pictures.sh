#!/bin/sh
# Stands in for a process that makes pictures, and is a bad one as its document is called.
read -r setup
hang() {
    : >"$FAKE_PICTURES_WAIT"
    exec sleep 100000
}
case $setup in
*'crashes before it opens'*) kill -SEGV $$ ;;
*'hangs before it opens'*) hang ;;
*'refuses'*)
    echo '{"failed":{"reason":"damaged","text":"damaged beyond repair"}}'
    exit 0
    ;;
*'opens twice'*) echo '{"opened":9}' ;;
*'prints garbage'*) echo 'garbage' ;;
*'leaves at once'*) exit 3 ;;
esac
echo '{"opened":3}'
while read -r order; do
    case $order$setup in
    *'"page":2'*'crashes over page 2'*) kill -SEGV $$ ;;
    *'"page":2'*'is killed over page 2'*) kill -KILL $$ ;;
    *'"page":2'*'hangs over page 2'*) hang ;;
    *'"page":2'*'hangs within page 2'*)
        printf '{"width":2,"height":1}\nabc'
        hang
        ;;
    *'"page":2'*'wider than asked for'*) echo '{"width":201,"height":1}' ;;
    *'"page":2'*'without pixels'*) echo '{"width":0,"height":0}' ;;
    *'"page":2'*'facts instead'*) echo '{"sizes":[1,2],"labels":["i"]}' ;;
    *'"page":2'*'cannot draw page 2'*) echo '{"failed":{"reason":"library-failed","text":"it is odd"}}' ;;
    *'"pages":2'*'facts of too many'*) echo '{"sizes":[1,2,1,2,1,2],"labels":["a","b","c"]}' ;;
    *'"pages":2'*) echo '{"sizes":[100,200,100,200],"labels":["i","ii"]}' ;;
    *) printf '{"width":2,"height":1}\nabcdef' ;;
    esac
done
