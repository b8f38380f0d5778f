"""Numbers of the caller as rows of float64 that the library reads where they lie."""

from typing import Any, List, Tuple

import numpy as np
import numpy.typing as npt

Doubles = npt.NDArray[np.float64]
# Arrays, sequences or single numbers. Not complex ones, truth values, texts or times.
Numbers = npt.ArrayLike


def doubles(values: Any, what: str) -> Doubles:
    """The values as float64, copied only if they are of another type. Masked and missing ones are NaN."""
    try:
        array = np.asarray(values)
    except ValueError as error:  # rows of different lengths
        raise ValueError(f"{what}: {error}") from None
    if array.dtype.kind not in "fiuO":
        raise TypeError(f"{what} is not numbers but {array.dtype}")
    if array.dtype.kind == "O" and any(isinstance(v, (str, bytes, bool, np.bool_)) for v in array.flat):
        raise TypeError(f"{what} is not numbers but has texts or truth values")
    try:
        if isinstance(values, np.ma.MaskedArray):
            masked: Any = values.astype(np.float64)
            return np.asarray(masked.filled(np.nan))
        if array.dtype.kind == "O" and hasattr(values, "to_numpy"):  # pandas' own types
            return np.asarray(values.to_numpy(np.float64, na_value=np.nan))
        return np.asarray(array, np.float64)
    except (TypeError, ValueError, OverflowError) as error:
        raise TypeError(f"{what} is not numbers: {error}") from None


def rows(**named: Any) -> Tuple[List[Doubles], Tuple[int, ...]]:
    """The arrays side by side, each as one row in C order, and the shape they have together.

    A copy is made of what has no single step from one element to the next: an array that is repeated to fit
    another, and one of several dimensions with gaps.
    """
    arrays = [doubles(values, what) for what, values in named.items()]
    shape = np.broadcast_shapes(*(array.shape for array in arrays))
    flat = [(a if a.shape == shape else np.broadcast_to(a, shape)).reshape(-1) for a in arrays]
    return [np.ascontiguousarray(row) if row.strides[0] == 0 else row for row in flat], shape


def passed(*arrays: npt.NDArray[Any]) -> List[int]:
    """The parameters that tell the library of rows: address and step of each."""
    return [number for array in arrays for number in (array.ctypes.data, array.strides[0])]
