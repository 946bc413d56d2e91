# The words of polefit-cli, which are words of polefit too.
_polefit()
{
  local cur prev words cword
  _init_completion -n = || return
  case $prev in
    --as) COMPREPLY=($(compgen -W 'model equalise want' -- "$cur")); return ;;
    --unit) COMPREPLY=($(compgen -W 'Hz kHz MHz GHz' -- "$cur")); return ;;
    --values) COMPREPLY=($(compgen -W 'linear db db10 ri ma' -- "$cur")); return ;;
    --delay-unit) COMPREPLY=($(compgen -W 's ms us ns ps' -- "$cur")); return ;;
    --points)
      [[ ${words[1]} == --export ]] && COMPREPLY=($(compgen -W 'data' -- "$cur"))
      return
      ;;
    --export)
      COMPREPLY=($(compgen -W 'scipy matlab spice spice-laplace spice-rlc csv csv-curves touchstone json' -- "$cur"))
      return
      ;;
    --fill)
      compopt -o nospace
      COMPREPLY=($(compgen -S = -W 'Frequency Yin Yout Weight DelayFrequency Delay' -- "$cur"))
      return
      ;;
    --frequency | --yin | --yout | --weight | --delay | --angle | --imag | --parameter | --from | --to | --every | \
      --smooth | --poles) return ;;
  esac
  if [[ $cur == -* ]]; then
    local options
    case ${words[1]} in
      --check) options='--json' ;;
      --export) options='--points' ;;
      --fill) options='--fill --grid' ;;
      --import)
        options='--as --frequency --yin --yout --weight --delay --angle --imag --parameter --unit --values --delay-unit
          --delay-from --delay-from-phase --from --to --every --points --log --smooth --normalise --poles --into --grid'
        ;;
    esac
    if ((cword == 1)); then
      options='--check --rewrite --import --export --fill --version --help'
      [[ ${words[0]##*/} == polefit ]] && options+=' --plot'
    fi
    COMPREPLY=($(compgen -W "$options" -- "$cur"))
    return
  fi
  _filedir
}
complete -F _polefit polefit-cli
