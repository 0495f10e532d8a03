"""$cursor$"""


def main():
    pass


if __name__ == "__main__":
    main()
