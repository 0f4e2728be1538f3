# zsh -f capture.zsh FOLDER LINE...
# Types each LINE and a tab into one interactive zsh whose completion system
# loads _quillon from FOLDER, and prints every word the completion offers,
# one a line, each with the suffix it would be given ("a=" for "a" with "="),
# then a line "<<end>>" for each LINE.
zmodload zsh/zpty || exit 1

local folder=$1 line
shift
local home=$(mktemp -d)
local offered=$home/offered

# The shell under test: no prompt, no listing, and a compadd that writes
# down what it is given before adding it. Calls that only ask which words
# match (-O, -A, -D) go straight through.
cat > $home/.zshrc <<RC
PS1='' RPS1='' PROMPT_EOL_MARK=''
unsetopt autolist listbeep beep
fpath=(${(q)folder} \$fpath)
autoload -Uz compinit && compinit -u -D
compadd() {
  if [[ \${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then
    builtin compadd "\$@"
    return
  fi
  local -a found
  local suffix= i
  for (( i = 1; i <= \$#; i++ )); do
    case \${@[i]} in
      (--) break ;;
      (-S) suffix=\${@[i+1]}; (( i++ )) ;;
      (-S*) suffix=\${@[i]#-S} ;;
    esac
  done
  builtin compadd -O found "\$@"
  (( \${#found} )) && print -rl -- \${^found}\$suffix >> ${(q)offered}
  builtin compadd "\$@"
}
_quillon_test_complete() { zle complete-word; BUFFER= CURSOR=0; print -n '\n<<completed>>\n' }
zle -N _quillon_test_complete
bindkey '^I' _quillon_test_complete
RC

: > $offered
zpty quillon ZDOTDIR=$home TERM=dumb zsh -i
local answer
for line in "$@"; do
  zpty -w -n quillon "$line"$'\t'
  zpty -r -m quillon answer '*<<completed>>*'
  cat $offered
  print '<<end>>'
  : > $offered
done
zpty -d quillon
rm -rf $home
