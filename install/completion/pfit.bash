_pfit()
{
  local cur prev words cword
  _init_completion || return
  case $prev in
    --out) _filedir -d; return ;;
    --jobs | --orders) return ;;
  esac
  if [[ $cur == -* ]]; then
    COMPREPLY=($(compgen -W '--out --json --all-rows --summary --jobs --csv --orders --version --help' -- "$cur"))
    return
  fi
  _filedir
}
complete -F _pfit pfit
