_completion_loader polefit-cli
complete -F _polefit polefit
